#include "platform/Ole.h"

#include "platform/Wnd.h"

#include <algorithm>
#include <cstring>
#include <unordered_map>
#include <unordered_set>

namespace
{
struct GlobalBlock
{
    std::vector<BYTE> bytes;
    int locks = 0;
};

std::unordered_set<GlobalBlock*>& Blocks()
{
    static auto* blocks = new std::unordered_set<GlobalBlock*>;
    return *blocks;
}

GlobalBlock* AsBlock(HGLOBAL memory)
{
    auto* block = reinterpret_cast<GlobalBlock*>(memory);
    return Blocks().count(block) ? block : nullptr;
}

std::unordered_map<std::uintptr_t, COleDropTarget*>& Targets()
{
    static auto* targets = new std::unordered_map<std::uintptr_t, COleDropTarget*>;
    return *targets;
}

IDragDriver* g_dragDriver = nullptr;
bool g_dragging = false;
} // namespace

HGLOBAL GlobalAlloc(UINT, size_t bytes)
{
    auto* block = new GlobalBlock;
    block->bytes.assign(bytes, 0);
    Blocks().insert(block);
    return reinterpret_cast<HGLOBAL>(block);
}

void* GlobalLock(HGLOBAL memory)
{
    GlobalBlock* block = AsBlock(memory);
    if (!block)
        return nullptr;
    ++block->locks;
    // A zero-sized block still locks to a valid address.
    if (block->bytes.empty())
        block->bytes.reserve(1);
    return block->bytes.data();
}

BOOL GlobalUnlock(HGLOBAL memory)
{
    GlobalBlock* block = AsBlock(memory);
    if (!block || block->locks == 0)
        return FALSE;
    return --block->locks > 0;
}

HGLOBAL GlobalFree(HGLOBAL memory)
{
    GlobalBlock* block = AsBlock(memory);
    if (!block)
        return memory;
    Blocks().erase(block);
    delete block;
    return nullptr;
}

size_t GlobalSize(HGLOBAL memory)
{
    GlobalBlock* block = AsBlock(memory);
    return block ? block->bytes.size() : 0;
}

HGLOBAL MakeDropFiles(const std::vector<std::wstring>& files)
{
    size_t chars = 1;
    for (const std::wstring& file : files)
        chars += file.size() + 1;
    const size_t bytes = sizeof(DROPFILES) + chars * sizeof(wchar_t);
    HGLOBAL memory = GlobalAlloc(GHND, bytes);
    auto* base = static_cast<BYTE*>(GlobalLock(memory));
    DROPFILES header;
    std::memcpy(base, &header, sizeof(header));
    auto* names = reinterpret_cast<wchar_t*>(base + sizeof(DROPFILES));
    for (const std::wstring& file : files)
    {
        std::copy(file.begin(), file.end(), names);
        names += file.size();
        *names++ = L'\0';
    }
    *names = L'\0';
    GlobalUnlock(memory);
    return memory;
}

UINT DragQueryFileW(HDROP drop, UINT index, LPWSTR buffer, UINT capacity)
{
    const BYTE* base = nullptr;
    if (GlobalBlock* block = AsBlock(reinterpret_cast<HGLOBAL>(drop)))
        base = block->bytes.data();
    else
        base = reinterpret_cast<const BYTE*>(drop);
    if (!base)
        return 0;
    DROPFILES header;
    std::memcpy(&header, base, sizeof(header));
    if (!header.fWide)
        return 0;
    const auto* name = reinterpret_cast<const wchar_t*>(base + header.pFiles);
    UINT count = 0;
    while (*name)
    {
        const size_t length = std::wcslen(name);
        if (count == index)
        {
            if (buffer && capacity > 0)
            {
                const size_t copied = std::min<size_t>(length, capacity - 1);
                std::copy_n(name, copied, buffer);
                buffer[copied] = L'\0';
                return static_cast<UINT>(copied);
            }
            return static_cast<UINT>(length);
        }
        ++count;
        name += length + 1;
    }
    return index == 0xFFFFFFFF ? count : 0;
}

BOOL COleDataObject::IsDataAvailable(CLIPFORMAT format) const
{
    return m_pSource && m_pSource->HasFormat(format);
}

HGLOBAL COleDataObject::GetGlobalData(CLIPFORMAT format) const
{
    const std::vector<BYTE>* bytes = m_pSource ? m_pSource->GetData(format) : nullptr;
    if (!bytes)
        return nullptr;
    HGLOBAL memory = GlobalAlloc(GHND, bytes->size());
    if (!bytes->empty())
        std::memcpy(GlobalLock(memory), bytes->data(), bytes->size());
    GlobalUnlock(memory);
    return memory;
}

COleDataSource::COleDataSource() = default;
COleDataSource::~COleDataSource() = default;

unsigned long COleDataSource::InternalRelease()
{
    const unsigned long left = --m_refs;
    if (left == 0)
        delete this;
    return left;
}

void COleDataSource::CacheGlobalData(CLIPFORMAT format, HGLOBAL memory)
{
    GlobalBlock* block = AsBlock(memory);
    if (!block)
        return;
    m_formats[format] = block->bytes;
    GlobalFree(memory);
}

void COleDataSource::CacheData(CLIPFORMAT format, std::vector<BYTE> bytes)
{
    m_formats[format] = std::move(bytes);
}

const std::vector<BYTE>* COleDataSource::GetData(CLIPFORMAT format) const
{
    auto it = m_formats.find(format);
    return it == m_formats.end() ? nullptr : &it->second;
}

DROPEFFECT COleDataSource::DoDragDrop(DWORD allowed, LPCRECT, void*)
{
    // One drag at a time, as with a real mouse; a nested request is refused.
    if (!g_dragDriver || g_dragging)
        return DROPEFFECT_NONE;
    g_dragging = true;
    InternalAddRef();
    const DROPEFFECT effect = g_dragDriver->RunDrag(*this, allowed);
    g_dragging = false;
    InternalRelease();
    return effect;
}

void COleDataSource::SetDragDriver(IDragDriver* driver)
{
    g_dragDriver = driver;
}

IDragDriver* COleDataSource::GetDragDriver()
{
    return g_dragDriver;
}

bool COleDataSource::IsDragging()
{
    return g_dragging;
}

COleDropTarget::~COleDropTarget()
{
    Revoke();
}

BOOL COleDropTarget::Register(CWnd* wnd)
{
    if (!wnd || !wnd->GetSafeHwnd())
        return FALSE;
    Revoke();
    m_hWnd = wnd->GetSafeHwnd();
    Targets()[reinterpret_cast<std::uintptr_t>(m_hWnd)] = this;
    return TRUE;
}

void COleDropTarget::Revoke()
{
    if (!m_hWnd)
        return;
    auto& targets = Targets();
    auto it = targets.find(reinterpret_cast<std::uintptr_t>(m_hWnd));
    if (it != targets.end() && it->second == this)
        targets.erase(it);
    m_hWnd = nullptr;
}

CWnd* COleDropTarget::GetWindow() const
{
    return CWnd::FromHandle(m_hWnd);
}

COleDropTarget* COleDropTarget::FromWindow(HWND hwnd)
{
    auto& targets = Targets();
    auto it = targets.find(reinterpret_cast<std::uintptr_t>(hwnd));
    return it == targets.end() || !CWnd::FromHandle(hwnd) ? nullptr : it->second;
}

DROPEFFECT COleDropTarget::OnDragEnter(CWnd*, COleDataObject*, DWORD, CPoint)
{
    return DROPEFFECT_NONE;
}

DROPEFFECT COleDropTarget::OnDragOver(CWnd*, COleDataObject*, DWORD, CPoint)
{
    return DROPEFFECT_NONE;
}

DROPEFFECT COleDropTarget::OnDropEx(CWnd*, COleDataObject*, DROPEFFECT, DROPEFFECT, CPoint)
{
    return static_cast<DROPEFFECT>(-1);
}

BOOL COleDropTarget::OnDrop(CWnd*, COleDataObject*, DROPEFFECT, CPoint)
{
    return FALSE;
}

void COleDropTarget::OnDragLeave(CWnd*)
{
}

DROPEFFECT COleDropTarget::OnDragScroll(CWnd*, DWORD, CPoint)
{
    return DROPEFFECT_NONE;
}

DragSession::DragSession(COleDataSource& source, DROPEFFECT allowed)
    : m_source(source), m_data(&source), m_allowed(allowed)
{
    m_source.InternalAddRef();
}

DragSession::~DragSession()
{
    Leave();
    m_source.InternalRelease();
}

DROPEFFECT DragSession::MoveTo(HWND hwnd, POINT client, DWORD keyState)
{
    COleDropTarget* target = COleDropTarget::FromWindow(hwnd);
    if (hwnd != m_target)
        Leave();
    m_point = client;
    m_keyState = keyState;
    m_lastEffect = DROPEFFECT_NONE;
    CWnd* wnd = CWnd::FromHandle(hwnd);
    if (!target || !wnd)
        return DROPEFFECT_NONE;
    DROPEFFECT effect = DROPEFFECT_NONE;
    if (m_target != hwnd)
    {
        m_target = hwnd;
        effect = target->OnDragEnter(wnd, &m_data, keyState, CPoint(client));
    }
    else
    {
        const DROPEFFECT scroll = target->OnDragScroll(wnd, keyState, CPoint(client));
        effect = (scroll & DROPEFFECT_SCROLL) ? scroll : target->OnDragOver(wnd, &m_data, keyState, CPoint(client));
    }
    m_lastEffect = effect & m_allowed;
    return m_lastEffect;
}

DROPEFFECT DragSession::Drop()
{
    COleDropTarget* target = COleDropTarget::FromWindow(m_target);
    CWnd* wnd = CWnd::FromHandle(m_target);
    if (!target || !wnd || m_lastEffect == DROPEFFECT_NONE)
    {
        Leave();
        return DROPEFFECT_NONE;
    }
    m_target = nullptr; // a drop ends the visit without a leave
    const DROPEFFECT dropDefault = m_lastEffect;
    DROPEFFECT result = target->OnDropEx(wnd, &m_data, dropDefault, m_allowed, CPoint(m_point));
    if (result == static_cast<DROPEFFECT>(-1))
        result = target->OnDrop(wnd, &m_data, dropDefault, CPoint(m_point)) ? dropDefault : DROPEFFECT_NONE;
    return result;
}

void DragSession::Cancel()
{
    Leave();
}

void DragSession::Leave()
{
    const HWND hwnd = m_target;
    m_target = nullptr;
    if (COleDropTarget* target = COleDropTarget::FromWindow(hwnd))
        target->OnDragLeave(CWnd::FromHandle(hwnd));
}
