// The tools of a drill file while it is read.
#pragma once

#include "fabrication/drills/DrillScan.h"
#include "fabrication/drills/DrillTally.h"

#include <string_view>

namespace EDA::Fabrication {

class DrillToolBox {
public:
    DrillToolBox(DrillScan const &scan, Unit sizeUnit, std::map<int, DrillTool> const &beside,
                 DrillTally &tally);

    // Takes the size, plating and function of a tool.
    void define(DrillText::Statement const &statement, std::string_view number, DrillComments const &comments,
                std::size_t line);
    // Makes the tool of this number the current one. 0 is no tool.
    void select(std::string_view number);
    // To the next tool in the order of numbers, in files that change tools without naming them.
    void advance(std::size_t line);
    // The current tool; one is chosen where the file has named none but there is no doubt. -1: none.
    int current(std::size_t line);

    // All tools, with what comments and the table beside the file say of those that lack it.
    std::map<int, DrillTool> finished(DrillComments const &comments) const;

private:
    int idOf(int number);
    void setSize(int number, double size, std::size_t line);
    bool choose(std::size_t line);

    DrillScan const &scan_;
    Unit sizeUnit_;
    std::map<int, DrillTool> const &beside_;
    DrillTally &tally_;
    std::map<int, DrillTool> tools_; // by id
    std::map<int, int> ids_;         // by number as written; another one after a new definition
    std::map<int, int> numbers_;     // by id
    std::set<int> used_;             // ids that holes have
    int lastUsed_ = -1;
    int current_ = -1;
    bool hasSelected_ = false;
};

} // namespace EDA::Fabrication
