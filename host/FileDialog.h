#pragma once
// The host's file dialogs, shown through the installed dialog service; with none they cancel.

#include "host/StdStr.h"
#include "platform/WinConstants.h"

#include <cstdint>
#include <vector>

class CWnd;

class CFileDialog
{
public:
    // Flags honoured by the host's dialogs (their Win32 values).
    enum : unsigned long
    {
        Flag_OverwritePrompt = 0x2,
        Flag_HideReadOnly = 0x4,
        Flag_AllowMultiSelect = 0x200,
    };

    // The chosen path; the first one when several were chosen.
    CStdStr<wchar_t> GetPathName() const;
    // The chosen path without its folder.
    CStdStr<wchar_t> GetFileName() const;
    const std::vector<CStdStr<wchar_t>>& GetPathNames() const { return m_paths; }

protected:
    std::vector<CStdStr<wchar_t>> m_paths;
};

class CxFileDialog : public CFileDialog
{
public:
    enum FileDialogOperation : int
    {
        FileDialogOperation_Save = 0,
        FileDialogOperation_Open = 1,
        FileDialogOperation_SelectFolder = 2,
    };

    // defaultExtension: added to a saved name that has none. fileName: the proposed file or
    // folder. filter: "Description|*.a;*.b|Other|*.c||".
    CxFileDialog(FileDialogOperation operation, const CStdStr<wchar_t>& defaultExtension,
                 const CStdStr<wchar_t>& fileName, unsigned long flags, const CStdStr<wchar_t>& filter,
                 CWnd* parent);

    void SetCaption(const CStdStr<wchar_t>& caption) { m_caption = caption; }
    // IDOK with the chosen paths, or IDCANCEL.
    intptr_t DoModal();

private:
    FileDialogOperation m_operation;
    CStdStr<wchar_t> m_defaultExtension;
    CStdStr<wchar_t> m_fileName;
    unsigned long m_flags;
    CStdStr<wchar_t> m_filter;
    CStdStr<wchar_t> m_caption;
};
