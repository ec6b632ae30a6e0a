// Script lines about the host's own state: playback and what editing allows, the object toolbar
// that follows them, and which project is open.

#include "sonarium/app/script/ScriptRunner.h"

#include "host/ButtonWithTooltip.h"
#include "host/Utf8.h"
#include "sonarium/app/script/ScriptWords.h"
#include "sonarium/app/session/HostRecorder.h"
#include "sonarium/core/host/ProjectBuilder.h"
#include "sonarium/core/model/NodeRules.h"
#include "sonarium/core/storage/WorkUnitFile.h"

namespace sn
{
namespace
{
// "on" or "off" (and the two other words a line may use for them).
std::optional<bool> OnOff(std::wstring const& word, wchar_t const* on, wchar_t const* off)
{
    if (word == on)
        return true;
    if (word == off)
        return false;
    return std::nullopt;
}

std::wstring Listed(std::vector<std::wstring> const& items)
{
    std::wstring text;
    for (auto const& item : items)
        text += (text.empty() ? L"" : L", ") + item;
    return text.empty() ? L"(none)" : text;
}

std::wstring Relative(std::filesystem::path const& file, Project const& project)
{
    return file.empty() ? L"(never saved)" : Utf8::ToWide(file.lexically_proximate(project.GetFolder()).generic_string());
}
} // namespace

WorkUnitObject* ScriptRunner::WorkUnitAt(std::wstring const& path, std::wstring& error)
{
    Project* project = m_session.GetProject();
    auto* unit = dynamic_cast<WorkUnitObject*>(project ? FindByPath(*project, path) : nullptr);
    if (!unit || !unit->IsFile())
        Fail(error, L"no work unit at \"" + path + L"\"");
    return unit && unit->IsFile() ? unit : nullptr;
}

void ScriptRunner::AddHostStateCommands()
{
    EditingCapabilities& editing = m_session.GetHost().Capabilities();
    AddSubcommands(
        L"host",
        {
            {L"capability",
             [&editing](Words const& words, std::wstring& error)
             {
                 if (!WordCount(words, 4, 4, L"host capability NUMBER on|off", error))
                     return false;
                 const std::optional<bool> on = OnOff(words[3], L"on", L"off");
                 if (words[2].empty() || words[2].size() > 2 ||
                     words[2].find_first_not_of(L"0123456789") != std::wstring::npos)
                     return Fail(error, L"not a capability number: \"" + words[2] + L"\"");
                 if (!on)
                     return Fail(error, L"\"" + words[3] + L"\" is neither on nor off");
                 editing.SetCapabilityEnabled(static_cast<unsigned>(std::stoul(words[2])), *on);
                 return true;
             }},
            {L"object-type",
             [&editing](Words const& words, std::wstring& error)
             {
                 if (!WordCount(words, 4, 4, L"host object-type TYPE allowed|forbidden", error))
                     return false;
                 PMTreeNode::NodeType type;
                 if (!rules::ParseNodeType(Utf8::FromWide(words[2]), type))
                     return Fail(error, L"unknown object type \"" + words[2] + L"\"");
                 const std::optional<bool> allowed = OnOff(words[3], L"allowed", L"forbidden");
                 if (!allowed)
                     return Fail(error, L"\"" + words[3] + L"\" is neither allowed nor forbidden");
                 editing.SetObjectTypeAllowed(rules::ObjectTypeOf(type), *allowed);
                 return true;
             }},
            {L"read-only",
             [this](Words const& words, std::wstring& error)
             {
                 if (!WordCount(words, 4, 4, L"host read-only WORK-UNIT yes|no", error))
                     return false;
                 WorkUnitObject* unit = WorkUnitAt(words[2], error);
                 const std::optional<bool> readOnly = OnOff(words[3], L"yes", L"no");
                 if (!unit)
                     return false;
                 if (!readOnly)
                     return Fail(error, L"\"" + words[3] + L"\" is neither yes nor no");
                 const WorkUnitFile file = DescribeWorkUnitFile(*unit);
                 return (!file.path.empty() && WritableFiles::SetReadOnly(file.path, *readOnly)) ||
                        Fail(error, L"the file of \"" + words[2] + L"\" cannot be changed");
             }},
            {L"source-control",
             [this](Words const& words, std::wstring& error)
             {
                 if (!WordCount(words, 2, 2, L"host source-control", error))
                     return false;
                 Host& host = m_session.GetHost();
                 return host.ReadSourceControlStatus() ||
                        Fail(error, Utf8::ToWide(host.SourceControl().Problem().empty()
                                                     ? std::string("no project is open")
                                                     : host.SourceControl().Problem()));
             }},
        });
    AddSubcommands(
        L"print",
        {
            {L"editing",
             [this, &editing](Words const& words, std::wstring& error)
             {
                 if (!WordCount(words, 2, 2, L"print editing", error))
                     return false;
                 std::vector<std::wstring> capabilities, types;
                 for (unsigned capability : editing.DisabledCapabilities())
                     capabilities.push_back(std::to_wstring(capability));
                 for (OrbObjectType type : editing.ForbiddenTypes())
                     types.push_back(Utf8::ToWide(rules::NodeTypeKey(rules::NodeTypeOf(type))));
                 m_out << L"editing\n  playback: "
                       << (m_session.GetHost().IsInPlayback() ? L"playing" : L"stopped")
                       << L"\n  disabled capabilities: " << Listed(capabilities) << L"\n  forbidden types: "
                       << Listed(types) << L"\n";
                 return true;
             }},
            {L"work-unit",
             [this](Words const& words, std::wstring& error)
             {
                 if (!WordCount(words, 3, 3, L"print work-unit WORK-UNIT", error))
                     return false;
                 WorkUnitObject* unit = WorkUnitAt(words[2], error);
                 if (!unit)
                     return false;
                 const WorkUnitFile file = DescribeWorkUnitFile(*unit);
                 const FileStatus status = m_session.GetHost().SourceControl().StatusOf(unit->Id());
                 m_out << L"work unit " << ObjectPath(unit) << L"\n  file: " << Relative(file.path, *unit->GetProject())
                       << L"\n  state: " << Utf8::ToWide(WorkUnitFileStateName(file.state)) << L"\n";
                 if (!file.problem.empty())
                     m_out << L"  problem: " << Utf8::ToWide(file.problem) << L"\n";
                 m_out << L"  source control: "
                       << (status == FileStatus::None ? L"(none)" : Utf8::ToWide(FileStatusName(status)))
                       << L"\n  read-only: " << (WritableFiles::IsReadOnly(file.path) ? L"yes" : L"no") << L"\n";
                 return true;
             }},
            {L"source-control",
             [this](Words const& words, std::wstring& error)
             {
                 if (!WordCount(words, 2, 2, L"print source-control", error))
                     return false;
                 const SourceControlStatus& status = m_session.GetHost().SourceControl();
                 m_out << L"source control\n  repository: " << (status.HasRepository() ? L"yes" : L"none") << L"\n";
                 if (Project const* project = m_session.GetProject())
                     for (WorkUnitObject* unit : project->FileWorkUnits())
                         if (const FileStatus file = status.StatusOf(unit->Id()); file != FileStatus::None)
                             m_out << L"  " << ObjectPath(unit) << L": " << Utf8::ToWide(FileStatusName(file)) << L"\n";
                 return true;
             }},
            {L"project",
             [this](Words const& words, std::wstring& error)
             {
                 if (!WordCount(words, 2, 2, L"print project", error))
                     return false;
                 Project const* project = m_session.GetProject();
                 m_out << L"project\n  "
                       << (project ? std::wstring(project->GetName().c_str()) + L" " +
                                         Utf8::ToWide(GuidText::ToString(project->GetId()))
                                   : std::wstring(L"(none open)"))
                       << L"\n";
                 return true;
             }},
        });
}
} // namespace sn
