#include "host/FileDialog.h"

#include "host/StringHelp.h"
#include "platform/WinConstants.h"
#include "sonarium/ui/dialogs/DialogService.h"

#include <filesystem>

namespace
{
CStdStr<wchar_t> DefaultCaption(CxFileDialog::FileDialogOperation operation)
{
    switch (operation)
    {
    case CxFileDialog::FileDialogOperation_Save:
        return StringHelp::Localize(L"Save As");
    case CxFileDialog::FileDialogOperation_SelectFolder:
        return StringHelp::Localize(L"Select Folder");
    case CxFileDialog::FileDialogOperation_Open:
        break;
    }
    return StringHelp::Localize(L"Open");
}

std::wstring WithExtension(const std::wstring& path, std::wstring extension)
{
    if (!extension.empty() && extension.front() == L'.')
        extension.erase(0, 1);
    if (extension.empty() || std::filesystem::path(path).has_extension())
        return path;
    return path + L"." + extension;
}
} // namespace

CStdStr<wchar_t> CFileDialog::GetPathName() const
{
    return m_paths.empty() ? CStdStr<wchar_t>() : m_paths.front();
}

CStdStr<wchar_t> CFileDialog::GetFileName() const
{
    return std::filesystem::path(std::wstring(GetPathName())).filename().wstring();
}

CxFileDialog::CxFileDialog(FileDialogOperation operation, const CStdStr<wchar_t>& defaultExtension,
                           const CStdStr<wchar_t>& fileName, unsigned long flags,
                           const CStdStr<wchar_t>& filter, CWnd* parent)
    : m_operation(operation), m_defaultExtension(defaultExtension), m_fileName(fileName), m_flags(flags),
      m_filter(filter)
{
}

intptr_t CxFileDialog::DoModal()
{
    m_paths.clear();
    sn::IDialogService* service = sn::CurrentDialogService();
    if (!service)
        return IDCANCEL;

    sn::FileRequest request;
    request.operation = m_operation;
    request.caption = m_caption.empty() ? DefaultCaption(m_operation) : m_caption;
    request.filter = m_filter;
    request.defaultExtension = m_defaultExtension;
    request.proposedName = m_fileName;
    request.flags = m_flags;

    const sn::FileAnswer answer = service->ShowFileDialog(request);
    if (!answer.ok || answer.paths.empty())
        return IDCANCEL;
    const size_t count = (m_flags & Flag_AllowMultiSelect) ? answer.paths.size() : 1;
    for (size_t i = 0; i < count; ++i)
        m_paths.emplace_back(m_operation == FileDialogOperation_Save
                                 ? WithExtension(answer.paths[i], m_defaultExtension)
                                 : answer.paths[i]);
    return IDOK;
}
