// The statements of a Gerber or drill file with their lines, as the reader sees them.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace EDATool {

struct GerberStatement {
    std::string_view text; // trimmed; extended ones with their "%"
    std::size_t line;      // where it starts, from 1
    bool isDrill;          // "M48" or a tool stood before it
    bool swallows;         // a lone "%" took up lines that are no extended statements, to the next "%"
};

// Hands over one statement after the other. `text` must be UTF-8.
void walkGerberStatements(std::string_view text, const std::function<void(const GerberStatement &)> &handle);

} // namespace EDATool
