#include "sonarium/core/storage/UnitReadAhead.h"

#include <algorithm>
#include <system_error>

namespace sn::storage
{
namespace
{
// The builder keeps one core busy; the others read. Two cores make one reader, which keeps up
// with the builder; more would only hold more files in memory.
size_t ReaderCount(size_t units)
{
    const size_t cores = std::max(1u, std::thread::hardware_concurrency());
    return std::min({std::max<size_t>(cores, 2) - 1, size_t{3}, units});
}
} // namespace

UnitReadAhead::UnitReadAhead(std::vector<std::filesystem::path> paths, UnitTextReader read)
    : m_paths(std::move(paths)), m_read(read), m_window(4 * ReaderCount(m_paths.size()) + 4), m_done(m_paths.size())
{
    const size_t readers = ReaderCount(m_paths.size());
    try
    {
        for (size_t i = 0; i < readers; ++i)
            m_readers.emplace_back([this] { ReadUnits(); });
    }
    catch (const std::system_error&)
    {
        // No thread to be had: the readers started read on, and Take reads what they leave.
    }
}

UnitReadAhead::~UnitReadAhead()
{
    {
        const std::lock_guard lock(m_mutex);
        m_stop = true;
    }
    m_changed.notify_all();
    for (std::thread& reader : m_readers)
        reader.join();
}

void UnitReadAhead::ReadUnits()
{
    for (;;)
    {
        size_t index = 0;
        {
            std::unique_lock lock(m_mutex);
            m_changed.wait(lock, [&] { return m_stop || m_next == m_paths.size() || m_next < m_taken + m_window; });
            if (m_stop || m_next == m_paths.size())
                return;
            index = m_next++;
        }
        std::unique_ptr<UnitText> text = ReadNow(m_paths[index], m_read);
        {
            const std::lock_guard lock(m_mutex);
            m_done[index] = std::move(text);
        }
        m_changed.notify_all();
    }
}

std::unique_ptr<UnitText> UnitReadAhead::ReadNow(const std::filesystem::path& path, UnitTextReader read)
{
    auto text = std::make_unique<UnitText>();
    try
    {
        read(path, *text);
    }
    catch (...)
    {
        text->error = std::current_exception();
    }
    return text;
}

std::unique_ptr<UnitText> UnitReadAhead::Take(size_t index)
{
    std::unique_ptr<UnitText> text;
    {
        std::unique_lock lock(m_mutex);
        m_taken = index + 1;
        // No reader has come to it (none started, or they are not given the processor): the caller
        // reads it rather than wait.
        if (index >= m_next)
        {
            m_next = index + 1;
            lock.unlock();
            m_changed.notify_all();
            return ReadNow(m_paths[index], m_read);
        }
        m_changed.wait(lock, [&] { return m_done[index] != nullptr; });
        text = std::move(m_done[index]);
    }
    m_changed.notify_all();
    return text;
}
} // namespace sn::storage
