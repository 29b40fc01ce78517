// Where a model keeps the files that its attributes refer to.
#include "host/EntityCore/ReferencedFilesManager.h"

#include <cstddef>
#include <string_view>

namespace EntityGUI {

namespace {

bool isPlain(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' || c == '_';
}

void appendEscaped(std::string &text, char c) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    const auto byte = static_cast<unsigned char>(c);
    text += '%';
    text += digits[byte >> 4];
    text += digits[byte & 15];
}

} // namespace

std::string ReferencedFilesManager::getAttributeFolder(const std::string &label) {
    if (label.empty()) return "%";
    std::string folder;
    for (std::size_t i = 0; i < label.size(); ++i) {
        const bool isInnerBlank = label[i] == ' ' && i != 0 && i + 1 != label.size();
        if (isPlain(label[i]) || isInnerBlank) {
            folder += label[i];
        } else {
            appendEscaped(folder, label[i]);
        }
    }
    return folder;
}

} // namespace EntityGUI
