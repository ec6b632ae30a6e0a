// What a drop on the tree does: objects moved, copied or linked under the node hit, and dropped
// audio files imported under it at once or through the host's importer.

#include "explorer/DlgProjectExplorer.h"

#include "host/ClipboardHelpers.h"
#include "host/DragDropHelpers.h"
#include "host/HostWindows.h"
#include "host/MessageBox.h"
#include "host/SmartPtr.h"
#include "host/StringHelp.h"
#include "platform/Dialog.h"

#include <fmt/xchar.h>

DROPEFFECT DlgProjectExplorer::DropObjects(PMTreeNode* node, COleDataObject* data, DROPEFFECT dropDefault,
                                           DROPEFFECT dropList, CPoint point, bool rightDrag)
{
    if (!node)
        return DROPEFFECT_NONE;
    CSmartPtr<IOrbObject> object;
    object.Attach(priv::LookupOrbObject(node->ID()));
    if (!object)
        return DROPEFFECT_NONE;
    m_tree.ClientToScreen(&point);
    return ClipboardHelpers::DropObjects(object.Get(), data, dropDefault, dropList, point, rightDrag, nullptr);
}

bool DlgProjectExplorer::DropAudioFiles(const GUID& target, const std::vector<CStdStr<wchar_t>>& files,
                                        DWORD keyState)
{
    AFX_MANAGE_STATE(AfxGetStaticModuleState());
    // Shift imports voices in the current language; otherwise sound effects.
    const DWORD language = (keyState & MK_SHIFT) ? AudioFileLanguages::GetCurrentLanguageId() : k_sfxLanguageId;
    const auto operation =
        (keyState & MK_ALT) ? ImportFile::ImportOperation_ReplaceSources : ImportFile::ImportOperation_CreateNew;
    const bool direct = (keyState & (MK_CONTROL | MK_ALT)) != 0;

    if (target != GUID_NULL)
    {
        PMTreeNode* node = GetNodeWithGUID(target);
        const DWORD reference = AudioFileLanguages::GetReferenceLanguageId();
        if (node && node->Type() != PMTreeNode::SoundSFX && !(keyState & MK_ALT) && language != k_sfxLanguageId &&
            language != reference)
        {
            BringApplicationToTop();
            const CStdStr<wchar_t> caption = StringHelp::Localize(L"Files Import");
            const CStdStr<wchar_t> text = StringHelp::Localize(
                L"Sound VO can only be created in the reference language. Change your current language to {0} and "
                L"import your files again.");
            const std::wstring message = fmt::format(fmt::runtime(std::wstring_view(text.c_str())),
                                                     std::wstring(AudioFileLanguages::GetLanguageName(reference).c_str()));
            CWnd* owner = GetTopMostWndForMsgBox();
            CXMessageBoxEx(owner ? owner->GetSafeHwnd() : nullptr, message.c_str(), caption.c_str(),
                           MB_ICONEXCLAMATION, nullptr);
            return false;
        }
    }

    BringApplicationToTop();
    CSmartPtr<IOrbObject> object;
    if (target != GUID_NULL)
        object.Attach(priv::LookupOrbObject(target));
    if (direct)
        return AudioFilesImporter::ImportFiles(language, files, operation, object.Get(), true, 0.0, 0, true, false,
                                               false, nullptr);
    AudioFilesImporterDlg::Show(GetTopMostWndForMsgBox(), object.Get(), language, files,
                                ImportFile::ImportOperation_AskUser);
    return false;
}
