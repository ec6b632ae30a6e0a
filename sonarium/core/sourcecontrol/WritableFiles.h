#pragma once
// Files under source control are often kept read-only until someone takes them for editing. A
// change that would have to write such a work-unit file (or the project file) is offered to the
// user first: made writable, the change goes on; declined, the change is not made and the host
// raises "SourceControl"/"SourceControlAborted", so that a command in progress knows. Within one
// command (one outermost undo group) a file declined is not asked about again.

#include "sonarium/core/model/ProjectEdit.h"

#include <filesystem>
#include <functional>
#include <set>

namespace sn
{
class UndoManager;

class WritableFiles : public ProjectEdit::IChangeGate
{
public:
    // Asked with the file (from the project's folder); true makes it writable. With no question
    // installed (a host without a user) read-only files are declined.
    using Question = std::function<bool(const std::filesystem::path& file)>;

    explicit WritableFiles(const UndoManager& undo) : m_undo(undo) {}
    void SetQuestion(Question question) { m_question = std::move(question); }

    bool MayChange(std::initializer_list<const ProjectObject*> holders, bool projectFile) override;

    static bool IsReadOnly(const std::filesystem::path& file);
    // Gives the owner the right to write, as a source-control checkout would.
    static bool SetReadOnly(const std::filesystem::path& file, bool readOnly);

private:
    bool MayWrite(const Project& project, const std::filesystem::path& file);

    const UndoManager& m_undo;
    Question m_question;
    std::set<std::filesystem::path> m_declined;
    unsigned long m_declinedIn = 0; // the outermost undo group of the declines
};
} // namespace sn
