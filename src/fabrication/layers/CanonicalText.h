// Statements of canonical layer files.
#pragma once

#include "fabrication/LayerGraphics.h"
#include "fabrication/TextSink.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace EDA::Fabrication {

// A place as files say it, in nanometres.
struct GridPoint {
    std::int64_t x = 0;
    std::int64_t y = 0;
};

inline bool operator==(GridPoint const &a, GridPoint const &b) { return a.x == b.x && a.y == b.y; }
inline bool operator!=(GridPoint const &a, GridPoint const &b) { return !(a == b); }

// Cut to a hundred metres.
GridPoint gridPoint(Point const &p);

// Attribute values keep their commas; what would end a statement is written as \u and four digits.
std::string attributeText(std::string_view text, bool keepsCommas);

// Writes statements one a line and knows what stands after them.
class CanonicalText {
public:
    explicit CanonicalText(TextSink &sink) : text_(sink) {}

    // A whole line without its end.
    void line(std::string_view statement);
    TextBuffer &buffer() { return text_; }

    void setPolarity(bool dark);
    void select(int code);
    void moveTo(GridPoint const &p);
    void flash(GridPoint const &p);
    void lineTo(GridPoint const &p);
    void arcTo(GridPoint const &p, GridPoint const &centre, bool clockwise);

    // Whether the current point is there.
    bool isAt(GridPoint const &p) const { return hasCurrent_ && current_ == p; }
    GridPoint const &current() const { return current_; }
    std::size_t numOperations() const { return numOperations_; }
    void flush() { text_.flush(); }

private:
    void operation(std::string_view interpolation, GridPoint const &p, std::string_view tail);

    TextBuffer text_;
    GridPoint current_;
    bool hasCurrent_ = false; // the reader's own survives from file to file
    bool isDark_ = true;
    int selected_ = 0;
    std::size_t numOperations_ = 0;
};

} // namespace EDA::Fabrication
