#pragma once
// How deep the JSON files this host reads may nest. Files are checked before they are parsed, so
// that nothing that walks a parsed document (and recurses as it goes) ever meets a file deeper
// than this: a hostile or broken file is reported, not a crash.

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace sn::storage
{
// Work units hold objects at most EditGuard::kMaxDepth deep, two levels of JSON each; project and
// preference files stay well within.
constexpr size_t kMaxJsonDepth = 512;

// The offset of the first '[' or '{' that opens a level deeper than limit (strings skipped), or
// std::string_view::npos when there is none.
size_t FindTooDeep(std::string_view bytes, size_t limit = kMaxJsonDepth);

// "line 3, column 14: nested deeper than 512 levels, the most this host reads", or empty.
std::string DepthProblem(std::string_view bytes, size_t limit = kMaxJsonDepth);

// 1-based line and column of a byte offset.
std::pair<size_t, size_t> LineAndColumn(std::string_view bytes, size_t offset);
} // namespace sn::storage
