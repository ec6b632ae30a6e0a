#pragma once
// Runs a script of user gestures and host actions against an application session, headless.
// The language is described in docs/scripting.md. Output goes to the stream given; the first
// bad line stops the run with an error that names the line and what was wrong.

#include "sonarium/app/script/ScriptedMenus.h"
#include "sonarium/app/session/AppSession.h"
#include "sonarium/app/session/PaneFind.h"
#include "sonarium/ui/dialogs/ScriptedDialogService.h"

#include <functional>
#include <istream>
#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace sn
{
class FolderSnapshot;

class ScriptRunner
{
public:
    ScriptRunner(AppSession& session, std::wostream& out);
    ~ScriptRunner();
    ScriptRunner(ScriptRunner const&) = delete;
    ScriptRunner& operator=(ScriptRunner const&) = delete;

    // False at the first failing line; `error` then reads "<name>:<line>: <what was wrong>".
    bool Run(std::istream& script, std::string const& name, std::string& error);
    // One line; false with the reason when it cannot be done.
    bool RunLine(std::wstring const& line, std::wstring& error);

private:
    using Words = std::vector<std::wstring>;
    using Handler = std::function<bool(Words const&, std::wstring&)>;

    void AddCommands();
    // Lines "COMMAND WORD ..." whose second word is one of `subcommands` go to it; the others to
    // what COMMAND did before.
    void AddSubcommands(std::wstring const& command, std::map<std::wstring, Handler> subcommands);
    // ScriptHostState.cpp: playback, editing capabilities, the toolbar, the project.
    void AddHostStateCommands();
    WorkUnitObject* WorkUnitAt(std::wstring const& path, std::wstring& error);
    // ScriptContextMenu.cpp: the last menu, the text clipboard, folders opened, key bindings.
    void AddContextMenuCommands();
    // ScriptAudioState.cpp: languages of voices, conversion, the project cache.
    void AddAudioStateCommands();
    // ScriptPlaylist.cpp: the sequences and items of music playlists.
    void AddPlaylistCommands();
    ProjectObject* ObjectAt(std::wstring const& path, std::wstring& error);
    // The object at path when it is of the kind `is` tells, else null with "... is not KIND".
    ProjectObject* ObjectAt(std::wstring const& path, bool (*is)(ProjectObject const*), wchar_t const* kind,
                            std::wstring& error);
    bool Gesture(Words const& words, std::wstring& error);
    bool Key(Words const& words, std::wstring& error);
    bool Answer(Words const& words, std::wstring& error);
    bool Send(Words const& words, std::wstring& error);
    bool HostEdit(Words const& words, std::wstring& error);
    bool Print(Words const& words, std::wstring& error);
    bool OpenPane(Words const& words, std::wstring& error);
    // ScriptStructure.cpp: the explorer's structure commands, the answers of the host's tools,
    // and the state of one object.
    bool Command(Words const& words, std::wstring& error);
    bool AnswerTool(Words const& words, std::wstring& error);
    // ScriptDrags.cpp: files dropped from a file manager, rows dragged onto rows.
    bool DropFiles(Words const& words, std::wstring& error);
    bool Drag(Words const& words, std::wstring& error);
    // ScriptCreation.cpp: the toolbar's buttons, user preferences, an object's stored state.
    void AddCreationCommands();
    bool ClickToolbar(Words const& words, std::wstring& error);
    bool PrintToolbar(Words const& words, std::wstring& error);
    bool PrintObject(Words const& words, std::wstring& error);
    bool SetPreference(Words const& words, std::wstring& error);
    // ScriptClipboard.cpp: what the host's object clipboard holds.
    bool PrintClipboard();
    // A row of a pane (scrolled into view), or the empty space below its last row for "below".
    bool DropPoint(Pane& pane, std::wstring const& target, CPoint& point, std::wstring& error);
    // ScriptFind.cpp: each pane's search field.
    void AddFindCommands();
    PaneFind* FindOf(Words const& words, size_t index, std::wstring& error);
    // ScriptPanels.cpp: the Edit menu and the property inspector.
    void AddPanelCommands();
    // ScriptChecks.cpp: `check`, and whether a failing line stops the run.
    void AddCheckCommands();
    bool CheckFiles(std::wstring const& what, std::wstring& error);
    bool PrintPanel(std::wstring const& what);
    Pane* PaneNamed(Words const& words, size_t index, std::wstring& error);
    HTREEITEM Row(std::wstring const& path, std::wstring& error);
    HTREEITEM Row(PETreeCtrl& tree, std::wstring const& path, std::wstring& error);
    PETreeCtrl* Tree(std::wstring& error);
    Pane* CurrentPane(std::wstring& error);

    AppSession& m_session;
    std::wostream& m_out;
    ScriptedDialogService m_dialogs;
    ScopedDialogService m_installDialogs;
    ScriptedMenus m_menus;
    std::map<std::wstring, Handler> m_commands;
    std::wstring m_pane;               // the pane gestures go to; empty: the first
    std::vector<std::wstring> m_drops; // what each drop and drag did, until printed
    std::unique_ptr<FolderSnapshot> m_snapshot; // the project's files at `check snapshot`
    int m_heldLocks = 0;               // raises of the UI lock made by `host lock`
    bool m_keepGoing = false;          // `on-error continue`: a failing line does not stop the run
    std::map<std::wstring, std::unique_ptr<PaneFind>> m_finds; // by pane name
};
} // namespace sn
