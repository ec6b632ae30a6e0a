#include "sonarium/ui/dialogs/HostTools.h"

#include "host/MessageBox.h"
#include "host/StringHelp.h"
#include "sonarium/ui/dialogs/AudioFilesImporterDlg.h"
#include "sonarium/ui/dialogs/BatchRenameDlg.h"

namespace sn
{
void RegisterHostTools(Commands& commands, std::function<std::vector<IOrbObject*>()> selection)
{
    commands.Register(ROString("ShowBatchRename"),
                      [selection](uintptr_t, uintptr_t, uintptr_t, uintptr_t, uintptr_t)
                      {
                          BatchRenameDlg::Run(selection());
                          return true;
                      });
    commands.Register(ROString("ShowAudioFilesImporter"),
                      [selection](uintptr_t given, uintptr_t, uintptr_t, uintptr_t, uintptr_t)
                      {
                          const std::vector<IOrbObject*> objects =
                              given ? *reinterpret_cast<const std::vector<IOrbObject*>*>(given) : selection();
                          if (objects.size() != 1 || !AsProjectObject(objects.front()))
                          {
                              const CStdStr<wchar_t> text =
                                  StringHelp::Localize(L"Select the one object to import audio files into.");
                              const CStdStr<wchar_t> caption = StringHelp::Localize(L"Import Audio Files");
                              CXMessageBox(text.c_str(), MB_OK | MB_ICONINFORMATION, caption.c_str());
                              return true;
                          }
                          AudioFilesImporterDlg::Run(AsProjectObject(objects.front()));
                          return true;
                      });
}
} // namespace sn
