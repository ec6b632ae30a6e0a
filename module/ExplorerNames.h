#pragma once
// Names the explorer registers when the module loads: notification channels and events,
// global properties, host command names, theme colours, registered window messages and
// the settings path. Channel and event names compare by identity, so each use below has
// its own constant even where two share a text.

#include "host/ROString.h"
#include "host/Theme.h"
#include "platform/WinTypes.h"

namespace PENames
{
// "Project" channel and its events.
extern const ROString rosProject;
extern const ROString rosPre_Close;
extern const ROString rosPost_Close;
extern const ROString rosProjectCreated;
extern const ROString rosProjectLoaded;
extern const ROString rosCacheChanged;

// "Transport" channel.
extern const ROString rosTransport;
extern const ROString rosTransportPrimaryDisable;

// "EventViewer" channel.
extern const ROString rosEventViewer;
extern const ROString rosObjectsList;

// Global properties.
extern const ROString rosCurrentPlatform;
extern const ROString rosCurrentLanguageID;
extern const ROString rosLockUIUpdate;

// "SonariumObject" channel and its events.
extern const ROString rosSonariumObject;
extern const ROString rosObjectCreated;
extern const ROString rosObjectLoaded;
extern const ROString rosPreDestroy;
extern const ROString rosNameChanged;
extern const ROString rosInclusionChanged;
extern const ROString rosColorChanged;
extern const ROString rosLanguageInclusionChanged;
extern const ROString rosChildAdded;
extern const ROString rosChildRemoved;
extern const ROString rosPlayInPrimaryTransport;
extern const ROString rosObjectSubTypeChanged;
extern const ROString rosActiveSourceChanged;
extern const ROString rosSourceFileChanged;
extern const ROString rosConversionSettingsChanged;

// "Clipboard" channel.
extern const ROString rosClipboard;
extern const ROString rosReferenceBeingRemoved;

// "WorkUnit" channel.
extern const ROString rosWorkUnit;
extern const ROString rosDirtyChanged;

// "EditingManager" channel.
extern const ROString rosEditingManager;

// "Conversion" channel.
extern const ROString rosConversion;
extern const ROString rosOverrideConversionChanged;
extern const ROString rosConversionUsageChanged;

// "SourceControl" channel.
extern const ROString rosSourceControl;
extern const ROString rosSourceControlIconsRefreshAll;
extern const ROString rosSourceControlAborted;

// Names used by the inclusion and event commands.
extern const ROString rosInclusion;
extern const ROString rosScope;
extern const ROString rosTarget;

// Host commands run by name.
extern const ROString rosShowBatchRename;
extern const ROString rosShowAudioFilesImporter;

// The drop target's own channel.
extern const ROString rosPEDropTarget;
extern const ROString rosAudioFilesDropped;

// Theme colours of the tree.
extern const sn::theme::Color clrBackground;
extern const sn::theme::Color clrNormalText;

// Registered window message that asks a view to inspect its selection
// (lParam 1: from a double click). The announcement message is
// DlgProjectExplorer::s_uSendSelectionMsg.
extern const UINT uInspectObjectMsg;

// Prefix of every per-user setting of the explorer.
extern const wchar_t* const szSettingsPath;

// Path of the audio file importer's settings; kept for the host's tools.
extern const wchar_t* const szAudioFileImporterPath;
} // namespace PENames
