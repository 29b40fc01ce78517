// The words of the layout's text form, which its reader and its writer share.
#pragma once

#include <charconv>
#include <string>
#include <string_view>

namespace QvDbWrap {

// The first line: the mark and the version.
constexpr std::string_view layoutMark = "EDA-LAYOUT";
constexpr int layoutVersion = 1;

// A value with a word of its own; any other value stands as a number.
struct LayoutWord {
    int value;
    std::string_view word;
};

constexpr LayoutWord kindWords[] = {{0, "box"}, {1, "polygon"}, {2, "circle"}};
constexpr LayoutWord roleWords[] = {{0, "solid"}, {1, "hole"}};
constexpr LayoutWord layerWords[] = {{0, "conductor"}, {1, "dielectric"}};
constexpr LayoutWord bumpWords[] = {{0, "none"}};
constexpr LayoutWord flagWords[] = {{0, "no"}, {1, "yes"}};

template <std::size_t size> std::string wordOf(const LayoutWord (&words)[size], int value) {
    for (const LayoutWord &word : words) {
        if (word.value == value) return std::string(word.word);
    }
    return std::to_string(value);
}

// False for a text that is neither a word nor a whole number.
template <std::size_t size> bool valueOf(const LayoutWord (&words)[size], std::string_view text, int &value) {
    for (const LayoutWord &word : words) {
        if (word.word != text) continue;
        value = word.value;
        return true;
    }
    const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
    return read.ec == std::errc() && read.ptr == text.data() + text.size();
}

} // namespace QvDbWrap
