// The form in which a file is written.
#pragma once

#include <string>
#include <string_view>

namespace EDA::Fabrication {

enum class FileForm {
    Layer,
    Drill,
    Text, // neither, but text
    Binary,
    Archive,
};

// By the first line that tells: "%FSLAX24Y24*%" is of a layer, "M48" of a drill file. Looks at the first part
// of the bytes alone.
FileForm formOf(std::string_view bytes);

// The whole file as UTF-8. False, with the reason, where it cannot be read or is beyond the limit.
bool readText(std::string const &file, std::string &text, std::string &error);

} // namespace EDA::Fabrication
