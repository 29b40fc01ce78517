// Counts the objects of a Gerber file from its text, without any shape, and what becomes of them.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <string>
#include <string_view>

namespace TestSupport {

// Draws, flashes and contours as the text has them, each with a place or an operation of its own; and those
// objects that become no conductor, or more than one, by a rule.
class GerberTally {
public:
    explicit GerberTally(std::string_view text) {
        std::string statement;
        bool isExtended = false;
        for (const char c : text) {
            if (c == '%' && (isExtended || statement.empty())) { // one within a comment is a character
                isExtended = !isExtended;
                statement.clear();
            } else if (c == '*') {
                isExtended ? takeExtended(statement) : takePlain(statement);
                statement.clear();
            } else if (c != '\n' && c != '\r' && (c != ' ' || !statement.empty())) {
                statement += c;
            }
        }
    }

    std::size_t draws = 0;       // outside of regions
    std::size_t regionDraws = 0; // within
    std::size_t regionMoves = 0;
    std::size_t flashes = 0;

    std::size_t contours = 0;        // of regions; of more than one point
    std::size_t lonePoints = 0;      // a move after a move in a region: that contour leaves nothing
    std::size_t loneModes = 0;       // a "G01", "G02" or "G03" by itself, which draws or flashes once more
    std::size_t withoutAperture = 0; // drawn after a change of polarity before an aperture was chosen anew
    std::size_t clear = 0;           // make holes
    std::size_t copies = 0;          // of a step and repeat, beyond the first

    // How many conductors that leaves, each of one piece.
    std::size_t conductors() const {
        return draws + flashes + contours + loneModes - withoutAperture - clear + copies;
    }

private:
    enum class Operation { Move, Draw, Flash };

    static bool startsWith(std::string_view text, std::string_view start) {
        return text.substr(0, start.size()) == start;
    }
    static bool endsWith(std::string_view text, std::string_view end) {
        return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
    }
    static int numberBehind(const std::string &text, char letter) {
        const std::size_t at = text.find(letter);
        return at == std::string::npos ? 0 : std::atoi(text.c_str() + at + 1);
    }

    void takeExtended(const std::string &statement) {
        if (startsWith(statement, "LP")) {
            isDark_ = startsWith(statement, "LPD");
            hasAperture_ = false;
        } else if (startsWith(statement, "SR")) {
            numX_ = numberBehind(statement, 'X');
            numY_ = numberBehind(statement, 'Y');
        }
    }

    void takePlain(const std::string &statement) {
        const bool isMode =
            startsWith(statement, "G01") || startsWith(statement, "G02") || startsWith(statement, "G03");
        if (startsWith(statement, "G04")) return;
        if (startsWith(statement, "G36")) {
            inRegion_ = true;
            contourPoints_ = 0;
        } else if (startsWith(statement, "G37")) {
            endContour();
            inRegion_ = false;
        } else if (endsWith(statement, "D01") || endsWith(statement, "D1")) {
            operate(Operation::Draw, false);
        } else if (endsWith(statement, "D02") || endsWith(statement, "D2")) {
            operate(Operation::Move, false);
        } else if (endsWith(statement, "D03") || endsWith(statement, "D3")) {
            operate(Operation::Flash, false);
        } else if (isMode || startsWith(statement, "X") || startsWith(statement, "Y")) {
            operate(last_, statement.size() == 3 && isMode);
        } else if (startsWith(statement, "D") || startsWith(statement, "G54")) {
            hasAperture_ = true;
        }
    }

    void operate(Operation operation, bool isLone) {
        last_ = operation;
        if (operation == Operation::Move) {
            if (!inRegion_) return;
            regionMoves += isLone ? 0 : 1;
            endContour();
            contourPoints_ = 1;
        } else if (operation == Operation::Draw && inRegion_) {
            regionDraws += isLone ? 0 : 1;
            ++contourPoints_;
        } else {
            ++(isLone ? loneModes : operation == Operation::Draw ? draws : flashes);
            hasAperture_ ? take() : void(++withoutAperture);
        }
    }

    void endContour() {
        if (contourPoints_ == 1) ++lonePoints;
        if (contourPoints_ > 1) {
            ++contours;
            take();
        }
        contourPoints_ = 0;
    }

    void take() {
        if (!isDark_) {
            ++clear;
        } else if (numX_ > 1 || numY_ > 1) {
            copies +=
                static_cast<std::size_t>(std::max(numX_, 0)) * static_cast<std::size_t>(std::max(numY_, 0)) -
                1;
        }
    }

    bool isDark_ = true;
    bool hasAperture_ = false;
    bool inRegion_ = false;
    int numX_ = 1;
    int numY_ = 1;
    std::size_t contourPoints_ = 0;
    Operation last_ = Operation::Move;
};

} // namespace TestSupport
