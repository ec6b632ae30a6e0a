#include "sonarium/core/storage/JsonDepth.h"

namespace sn::storage
{
size_t FindTooDeep(std::string_view bytes, size_t limit)
{
    size_t depth = 0;
    bool inString = false;
    for (size_t i = 0; i < bytes.size(); ++i)
    {
        const char c = bytes[i];
        if (inString)
        {
            if (c == '\\')
                ++i;
            else if (c == '"')
                inString = false;
            continue;
        }
        switch (c)
        {
        case '"':
            inString = true;
            break;
        case '[':
        case '{':
            if (++depth > limit)
                return i;
            break;
        case ']':
        case '}':
            if (depth > 0)
                --depth;
            break;
        default:
            break;
        }
    }
    return std::string_view::npos;
}

std::string DepthProblem(std::string_view bytes, size_t limit)
{
    const size_t offset = FindTooDeep(bytes, limit);
    if (offset == std::string_view::npos)
        return {};
    const auto [line, column] = LineAndColumn(bytes, offset);
    return "line " + std::to_string(line) + ", column " + std::to_string(column) + ": nested deeper than " +
           std::to_string(limit) + " levels, the most this host reads";
}

std::pair<size_t, size_t> LineAndColumn(std::string_view bytes, size_t offset)
{
    size_t line = 1, column = 1;
    for (size_t i = 0; i < offset && i < bytes.size(); ++i)
    {
        if (bytes[i] == '\n')
        {
            ++line;
            column = 1;
        }
        else
            ++column;
    }
    return {line, column};
}
} // namespace sn::storage
