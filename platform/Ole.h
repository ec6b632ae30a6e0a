#pragma once
// OLE-style drag and drop: global memory blocks, file lists in the CF_HDROP layout, data
// sources and data objects carrying data per clipboard format, drop targets registered on
// windows, and the drag loop, which a drag driver runs (the desktop application with the
// real mouse, a script or a test with scripted moves).

#include "platform/WinConstants.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

class CWnd;
class COleDataSource;

// Global memory, as the clipboard formats exchange it.
constexpr UINT GMEM_MOVEABLE = 0x0002;
constexpr UINT GMEM_ZEROINIT = 0x0040;
constexpr UINT GHND = GMEM_MOVEABLE | GMEM_ZEROINIT;
HGLOBAL GlobalAlloc(UINT flags, size_t bytes);
void* GlobalLock(HGLOBAL memory);
BOOL GlobalUnlock(HGLOBAL memory);
HGLOBAL GlobalFree(HGLOBAL memory); // null on success
size_t GlobalSize(HGLOBAL memory);

// The header of a CF_HDROP block, followed by the wide file names, each null-terminated, and
// a final null.
struct DROPFILES
{
    DWORD pFiles = sizeof(DROPFILES);
    POINT pt;
    BOOL fNC = FALSE;
    BOOL fWide = TRUE;
};

// Builds a CF_HDROP block from file paths; the caller owns it.
HGLOBAL MakeDropFiles(const std::vector<std::wstring>& files);
// With index 0xFFFFFFFF returns the number of files; with a null buffer, the length of the
// name at index; otherwise copies the name (truncated to the buffer) and returns its length.
// Takes the locked block or the block's handle.
UINT DragQueryFileW(HDROP drop, UINT index, LPWSTR buffer, UINT capacity);
#define DragQueryFile DragQueryFileW

// The data a drag or the clipboard carries: bytes per format, and the in-process source.
class COleDataObject
{
public:
    COleDataObject() = default;
    explicit COleDataObject(COleDataSource* source) { Attach(source); }

    void Attach(COleDataSource* source) { m_pSource = source; }
    COleDataSource* GetSource() const { return m_pSource; }

    BOOL IsDataAvailable(CLIPFORMAT format) const;
    // A copy of the data in a new global block the caller frees, or null.
    HGLOBAL GetGlobalData(CLIPFORMAT format) const;

private:
    COleDataSource* m_pSource = nullptr;
};

// Runs a drag to its end and returns the effect performed.
class IDragDriver
{
public:
    virtual ~IDragDriver() = default;
    virtual DROPEFFECT RunDrag(COleDataSource& source, DROPEFFECT allowed) = 0;
};

class COleDataSource
{
public:
    COleDataSource();
    virtual ~COleDataSource();
    COleDataSource(const COleDataSource&) = delete;
    COleDataSource& operator=(const COleDataSource&) = delete;

    // Reference counting: a source starts with one reference, held by its creator.
    unsigned long InternalAddRef() { return ++m_refs; }
    unsigned long InternalRelease();

    // Takes ownership of the block.
    void CacheGlobalData(CLIPFORMAT format, HGLOBAL memory);
    void CacheData(CLIPFORMAT format, std::vector<BYTE> bytes);
    bool HasFormat(CLIPFORMAT format) const { return m_formats.count(format) != 0; }
    const std::vector<BYTE>* GetData(CLIPFORMAT format) const;
    void Empty() { m_formats.clear(); }

    // Runs the drag through the installed drag driver; without one nothing is dropped.
    DROPEFFECT DoDragDrop(DWORD allowed = DROPEFFECT_COPY | DROPEFFECT_MOVE | DROPEFFECT_LINK,
                          LPCRECT startRect = nullptr, void* dropSource = nullptr);

    static void SetDragDriver(IDragDriver* driver);
    static IDragDriver* GetDragDriver();
    static bool IsDragging();

private:
    std::map<CLIPFORMAT, std::vector<BYTE>> m_formats;
    unsigned long m_refs = 1;
};

class COleDropTarget
{
public:
    COleDropTarget() = default;
    virtual ~COleDropTarget();
    COleDropTarget(const COleDropTarget&) = delete;
    COleDropTarget& operator=(const COleDropTarget&) = delete;

    BOOL Register(CWnd* wnd);
    void Revoke();
    CWnd* GetWindow() const;
    // The target registered on a window, or null.
    static COleDropTarget* FromWindow(HWND hwnd);

    // Points are in the client coordinates of the window.
    virtual DROPEFFECT OnDragEnter(CWnd* wnd, COleDataObject* data, DWORD keyState, CPoint point);
    virtual DROPEFFECT OnDragOver(CWnd* wnd, COleDataObject* data, DWORD keyState, CPoint point);
    // Returning (DROPEFFECT)-1 lets OnDrop handle the drop.
    virtual DROPEFFECT OnDropEx(CWnd* wnd, COleDataObject* data, DROPEFFECT dropDefault, DROPEFFECT dropList,
                                CPoint point);
    virtual BOOL OnDrop(CWnd* wnd, COleDataObject* data, DROPEFFECT effect, CPoint point);
    virtual void OnDragLeave(CWnd* wnd);
    // A result with DROPEFFECT_SCROLL means the window scrolled and OnDragOver is skipped.
    virtual DROPEFFECT OnDragScroll(CWnd* wnd, DWORD keyState, CPoint point);

private:
    HWND m_hWnd = nullptr;
};

// The OLE drag loop as a drag driver performs it: moves over windows (entering and leaving
// drop targets as the window under the pointer changes), then a drop or a cancel.
class DragSession
{
public:
    DragSession(COleDataSource& source, DROPEFFECT allowed);
    ~DragSession();

    // Moves to a point in the client coordinates of a window; returns the effect the target
    // shows (masked by the allowed effects), or none where no target is registered.
    DROPEFFECT MoveTo(HWND hwnd, POINT client, DWORD keyState);
    // Drops where the last move ended; returns the effect performed.
    DROPEFFECT Drop();
    void Cancel();

    DROPEFFECT LastEffect() const { return m_lastEffect; }

private:
    void Leave();

    COleDataSource& m_source;
    COleDataObject m_data;
    DROPEFFECT m_allowed;
    HWND m_target = nullptr;
    POINT m_point{};
    DWORD m_keyState = 0;
    DROPEFFECT m_lastEffect = DROPEFFECT_NONE;
};
