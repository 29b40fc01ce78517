// Canonical text: numbers and buffering.
#include "fabrication/TextSink.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace EDA::Fabrication {

namespace {

constexpr double farthest = 1e5; // millimetres
constexpr std::int64_t perMillimetre = 1000000;

std::int64_t toNanometres(double millimetres) {
    if (std::isnan(millimetres)) return 0;
    return std::llround(std::clamp(millimetres, -farthest, farthest) * static_cast<double>(perMillimetre));
}

} // namespace

TextSink::~TextSink() = default;

void TextBuffer::addInteger(std::int64_t value) {
    char digits[24];
    const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    add(std::string_view(digits, static_cast<std::size_t>(end - digits)));
}

void TextBuffer::addCoordinate(double millimetres) { addInteger(toNanometres(millimetres)); }

void TextBuffer::addNumber(double millimetres) {
    std::int64_t value = toNanometres(millimetres);
    if (value < 0) add("-");
    value = std::abs(value);
    addInteger(value / perMillimetre);
    std::string decimals = std::to_string(perMillimetre + value % perMillimetre).substr(1);
    decimals.resize(decimals.find_last_not_of('0') + 1);
    if (!decimals.empty()) add("." + decimals);
}

void TextBuffer::flush() {
    if (!text_.empty()) sink_.write(text_);
    text_.clear();
}

} // namespace EDA::Fabrication
