// Statements of canonical layer files: coordinates, operations and attribute text.
#include "fabrication/layers/CanonicalText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>

namespace EDA::Fabrication {

namespace {

constexpr double farthest = 1e5;
constexpr double perMillimetre = 1e6;

std::int64_t gridCoordinate(double millimetres) {
    if (std::isnan(millimetres)) return 0;
    return std::llround(std::clamp(millimetres, -farthest, farthest) * perMillimetre);
}

// Room for one statement.
class Line {
public:
    void add(std::string_view text) {
        std::memcpy(end_, text.data(), text.size());
        end_ += text.size();
    }
    void add(char axis, std::int64_t value) {
        *end_++ = axis;
        end_ = std::to_chars(end_, text_ + sizeof text_, value).ptr;
    }
    std::string_view view() const { return {text_, static_cast<std::size_t>(end_ - text_)}; }

private:
    char text_[160];
    char *end_ = text_;
};

} // namespace

GridPoint gridPoint(Point const &p) { return {gridCoordinate(p.x), gridCoordinate(p.y)}; }

std::string attributeText(std::string_view text, bool keepsCommas) {
    static constexpr char digits[] = "0123456789ABCDEF";
    std::string result;
    for (char const c : text) {
        auto const code = static_cast<unsigned char>(c);
        bool const isSpecial = code < 0x20 || code == 0x7f || c == '*' || c == '%' || c == '\\';
        if (isSpecial || (c == ',' && !keepsCommas)) {
            result += "\\u00";
            result += digits[code >> 4];
            result += digits[code & 15];
        } else {
            result += c;
        }
    }
    return result;
}

void CanonicalText::line(std::string_view statement) {
    text_.add(statement);
    text_.add("\n");
}

void CanonicalText::setPolarity(bool dark) {
    if (dark == isDark_) return;
    isDark_ = dark;
    selected_ = 0;
    line(dark ? "%LPD*%" : "%LPC*%");
}

void CanonicalText::select(int code) {
    if (code == selected_) return;
    selected_ = code;
    Line text;
    text.add('D', code);
    text.add("*\n");
    text_.add(text.view());
}

void CanonicalText::operation(std::string_view interpolation, GridPoint const &p, std::string_view tail) {
    Line text;
    text.add(interpolation);
    text.add('X', p.x);
    text.add('Y', p.y);
    text.add(tail);
    text_.add(text.view());
    current_ = p;
    hasCurrent_ = true;
    ++numOperations_;
}

void CanonicalText::moveTo(GridPoint const &p) { operation("", p, "D02*\n"); }

void CanonicalText::flash(GridPoint const &p) { operation("", p, "D03*\n"); }

void CanonicalText::lineTo(GridPoint const &p) { operation("G01", p, "D01*\n"); }

void CanonicalText::arcTo(GridPoint const &p, GridPoint const &centre, bool clockwise) {
    Line tail;
    tail.add('I', centre.x - current_.x);
    tail.add('J', centre.y - current_.y);
    tail.add("D01*\n");
    operation(clockwise ? "G02" : "G03", p, tail.view());
}

} // namespace EDA::Fabrication
