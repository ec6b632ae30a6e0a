// The host's tools the explorer opens on its selection: batch rename, the audio-file importer
// and the SoundBank-definition importer.

#include "explorer/DlgProjectExplorer.h"

#include "host/FileDialog.h"
#include "host/SBDefinitionImporterUI.h"
#include "host/ServiceProvider.h"
#include "host/StringHelp.h"
#include "host/TreeNodeWithObject.h"
#include "module/ExplorerApp.h"
#include "module/ExplorerNames.h"

using namespace PENames;

namespace
{
sn::CommandService* Commands()
{
    return sn::g_serviceProviderInstance
               ? sn::g_serviceProviderInstance->Get<sn::CommandService>(sn::ServiceId_Commands)
               : nullptr;
}
} // namespace

void DlgProjectExplorer::OnBatchRename()
{
    // The host's tool renames the host's selection.
    if (sn::CommandService* commands = Commands())
        commands->ExecuteCommand(rosShowBatchRename, 0, 0, 0, 0, 0);
}

void DlgProjectExplorer::OnAudioFileImporter()
{
    if (!IsSingleItemSelected())
        return;
    auto* node = static_cast<TreeNodeWithObject*>(m_tree.GetNodeFromItem(m_tree.GetFirstSelectedItem()));
    if (!node)
        return;
    std::vector<IOrbObject*> destination{node->GetObject()};
    if (sn::CommandService* commands = Commands())
        commands->ExecuteCommand(rosShowAudioFilesImporter, reinterpret_cast<uintptr_t>(&destination), 0, 0, 0, 0);
}

void DlgProjectExplorer::OnImportSoundbankDefinition()
{
    AFX_MANAGE_STATE(AfxGetStaticModuleState());
    CSmartPtr<IOrbObject> target;
    if (IsSingleItemSelected())
        if (PMTreeNode* node = m_tree.GetNodeFromItem(m_tree.GetFirstSelectedItem()))
            target.Attach(priv::LookupOrbObject(node->ID()));

    const CStdStr<wchar_t> filter = StringHelp::Localize(L"Text Files (*.txt)|*.txt|All Files (*.*)|*.*||");
    CxFileDialog dialog(CxFileDialog::FileDialogOperation_Open, CStdStr<wchar_t>(), CStdStr<wchar_t>(),
                        CFileDialog::Flag_HideReadOnly | CFileDialog::Flag_OverwritePrompt, filter, nullptr);
    if (dialog.DoModal() != IDOK)
        return;
    SBDefinitionImporterUI importer;
    importer.ImportSoundBankDefinition(dialog.GetPathName(), target);
}
