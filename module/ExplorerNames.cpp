#include "module/ExplorerNames.h"

#include "explorer/DlgProjectExplorer.h"
#include "platform/WindowSystem.h"

#include <string>

namespace PENames
{
const ROString rosProject("Project");
const ROString rosPre_Close("Pre_Close");
const ROString rosPost_Close("Post_Close");
const ROString rosProjectCreated("Created");
const ROString rosProjectLoaded("Loaded");
const ROString rosCacheChanged("CacheChanged");

const ROString rosTransport("Transport");
const ROString rosTransportPrimaryDisable("TransportPrimaryDisable");

const ROString rosEventViewer("EventViewer");
const ROString rosObjectsList("ObjectsList");

const ROString rosCurrentPlatform("CurrentPlatform");
const ROString rosCurrentLanguageID("CurrentLanguageID");
const ROString rosLockUIUpdate("LockUIUpdate");

const ROString rosSonariumObject("SonariumObject");
const ROString rosObjectCreated("Created");
const ROString rosObjectLoaded("Loaded");
const ROString rosPreDestroy("PreDestroy");
const ROString rosNameChanged("NameChanged");
const ROString rosInclusionChanged("InclusionChanged");
const ROString rosColorChanged("ColorChanged");
const ROString rosLanguageInclusionChanged("LanguageInclusionChanged");
const ROString rosChildAdded("ChildAdded");
const ROString rosChildRemoved("ChildRemoved");
const ROString rosPlayInPrimaryTransport("PlayInPrimaryTransport");
const ROString rosObjectSubTypeChanged("ObjectSubTypeChanged");
const ROString rosActiveSourceChanged("ActiveSourceChanged");
const ROString rosSourceFileChanged("SourceFileChanged");
const ROString rosConversionSettingsChanged("ConversionSettingsChanged");

const ROString rosClipboard("Clipboard");
const ROString rosReferenceBeingRemoved("ReferenceBeingRemoved");

const ROString rosWorkUnit("WorkUnit");
const ROString rosDirtyChanged("DirtyChanged");

const ROString rosEditingManager("EditingManager");

const ROString rosConversion("Conversion");
const ROString rosOverrideConversionChanged("OverrideConversionChanged");
const ROString rosConversionUsageChanged("ConversionUsageChanged");

const ROString rosSourceControl("SourceControl");
const ROString rosSourceControlIconsRefreshAll("SourceControlIconsRefreshAll");
const ROString rosSourceControlAborted("SourceControlAborted");

const ROString rosInclusion("Inclusion");
const ROString rosScope("Scope");
const ROString rosTarget("Target");

const ROString rosShowBatchRename("ShowBatchRename");
const ROString rosShowAudioFilesImporter("ShowAudioFilesImporter");

const ROString rosPEDropTarget("__PEDROPTARGET__");
const ROString rosAudioFilesDropped("AudioFilesDropped");

const sn::theme::Color clrBackground("Explorer_BackgroundColor");
const sn::theme::Color clrNormalText("Explorer_NormalText");

const UINT uInspectObjectMsg = RegisterWindowMessage(L"_ProjectExplorer_InspectObject");

const wchar_t* const szSettingsPath = L"ProjectExplorer\\<PROJECT>";

namespace
{
const std::wstring s_audioFileImporterPath =
    std::wstring(L"Audio File Management") + L"\\Audio File Importer";
}
const wchar_t* const szAudioFileImporterPath = s_audioFileImporterPath.c_str();
} // namespace PENames

// Registered after the inspect message; like it, one number for every view of the process.
const UINT DlgProjectExplorer::s_uSendSelectionMsg =
    RegisterWindowMessage(L"_ProjectExplorer_SendSelectionToEventViewer");
