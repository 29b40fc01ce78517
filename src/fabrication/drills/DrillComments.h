// What comments and attributes of drill files tell.
#pragma once

#include "fabrication/drills/DrillFile.h"

#include <string>
#include <string_view>

namespace EDA::Fabrication {

// Reads comments in the order of the file; some of them are for the tools that are defined after them.
class DrillComments {
public:
    void read(std::string_view comment);

    // Of the tools that are defined now.
    std::optional<bool> const &nextPlated() const { return nextPlated_; }
    std::string const &nextFunction() const { return nextFunction_; }

    struct Tool {
        double size = 0.0; // in `unit`; 0: not told
        Unit unit = Unit::Unknown;
        std::optional<bool> plated;
    };
    std::map<int, Tool> const &tools() const { return tools_; }

    DrillNumbers const &numbers() const { return numbers_; }
    // Of all holes: where nothing else is told, and where all tools are alike.
    std::optional<bool> plated() const;
    int fromLayer() const { return fromLayer_; }
    int toLayer() const { return toLayer_; }
    std::vector<std::string> const &fileFunction() const { return fileFunction_; }

private:
    bool readAttribute(std::string_view comment);
    void readFileFunction(std::vector<std::string_view> const &values);
    void readAperFunction(std::vector<std::string_view> const &values);
    bool readFormat(std::string const &text);
    void readFormatWord(std::string_view word);
    bool readType(std::string const &text);
    bool readHoleSize(std::string const &text);
    bool readContents(std::string const &text);

    DrillNumbers numbers_;
    std::map<int, Tool> tools_;
    std::optional<bool> nextPlated_;
    std::string nextFunction_;
    std::optional<bool> filePlated_;
    bool hasPlatedType_ = false;
    bool hasNonPlatedType_ = false;
    bool isMixed_ = false;
    int fromLayer_ = 0;
    int toLayer_ = 0;
    std::vector<std::string> fileFunction_;
};

// Plated or not by one word: "PTH", "NON_PLATED". In upper case.
std::optional<bool> platedByWord(std::string_view word);
// The unit that a word names: "MM", "MILS", "INCH"; mils give inches and a scale. In upper case.
bool readUnitWord(std::string_view word, Unit &unit, double &scale);

} // namespace EDA::Fabrication
