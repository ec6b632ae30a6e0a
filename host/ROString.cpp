#include "host/ROString.h"

#include <memory>
#include <mutex>
#include <string>
#include <unordered_set>

namespace
{
// Built on first use so that constants of any library may be interned during its
// static initialisation, whatever the order in which libraries are loaded. Never
// destroyed: constants of libraries unloaded late may still point into it.
struct InternTable
{
    std::mutex mutex;
    std::unordered_set<std::string> texts;
};

InternTable& Table()
{
    static InternTable* table = new InternTable;
    return *table;
}

const char* Intern(std::string_view text)
{
    if (text.empty())
        return nullptr;
    InternTable& table = Table();
    std::lock_guard<std::mutex> lock(table.mutex);
    // Node-based set: element addresses stay valid as it grows.
    return table.texts.emplace(text).first->c_str();
}
} // namespace

ROString::ROString(const char* text) : m_text(Intern(text ? std::string_view(text) : std::string_view()))
{
}

ROString::ROString(std::string_view text) : m_text(Intern(text))
{
}
