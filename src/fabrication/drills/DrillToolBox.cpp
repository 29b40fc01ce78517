// The tools of a drill file while it is read.
#include "fabrication/drills/DrillToolBox.h"

#include <algorithm>
#include <cmath>

namespace EDA::Fabrication {

using namespace DrillText;

namespace {

// No drill is that thick: a size without a decimal point is in thousandths then.
constexpr double thickestDrill = 50.0;

double sizeOf(DrillComments::Tool const &tool, Unit fallback) {
    return tool.size * millimetresOf(tool.unit == Unit::Unknown ? fallback : tool.unit);
}

} // namespace

DrillToolBox::DrillToolBox(DrillScan const &scan, Unit sizeUnit, std::map<int, DrillTool> const &beside,
                           DrillTally &tally)
    : scan_(scan), sizeUnit_(sizeUnit), beside_(beside), tally_(tally) {}

int DrillToolBox::idOf(int number) {
    const auto found = ids_.find(number);
    if (found != ids_.end()) return found->second;
    // A number may be taken by another tool that was defined twice.
    int id = number;
    if (tools_.count(id) != 0) id = tools_.rbegin()->first + 1;
    ids_[number] = id;
    numbers_[id] = number;
    tools_[id];
    return id;
}

void DrillToolBox::setSize(int number, double size, std::size_t line) {
    const int id = idOf(number);
    DrillTool &tool = tools_[id];
    const bool isOther = tool.diameter > 0.0 && std::fabs(tool.diameter - size) > 1e-9;
    if (!isOther || used_.count(id) == 0) {
        tool.diameter = size;
        return;
    }
    tally_.add(DrillTrouble::ToolDefinedAgain, line);
    const int next =
        std::max(tools_.rbegin()->first, scan_.definedTools.empty() ? 0 : *scan_.definedTools.rbegin()) + 1;
    DrillTool made = tool;
    made.diameter = size;
    tools_[next] = made;
    ids_[number] = next;
    numbers_[next] = number;
}

void DrillToolBox::define(Statement const &statement, std::string_view number, DrillComments const &comments,
                          std::size_t line) {
    const int tool = toolNumber(number, scan_.definedTools);
    if (tool <= 0) return;
    idOf(tool);
    if (Word const *word = statement.find('C')) {
        const Digits digits = digitsOf(word->number);
        double size = digits.isValid ? digits.value * millimetresOf(sizeUnit_) : 0.0;
        if (!digits.hasPoint && size > thickestDrill) {
            size /= 1000.0;
            tally_.add(DrillTrouble::SizeWithoutPoint, line);
        }
        if (size > 0.0 && size < 1e6) setSize(tool, size, line);
    }
    DrillTool &made = tools_[idOf(tool)];
    if (comments.nextPlated()) made.plated = comments.nextPlated();
    if (!comments.nextFunction().empty()) made.function = comments.nextFunction();
}

void DrillToolBox::select(std::string_view number) {
    const int tool = toolNumber(number, scan_.definedTools);
    hasSelected_ = hasSelected_ || tool > 0;
    current_ = tool > 0 ? idOf(tool) : -1;
}

bool DrillToolBox::choose(std::size_t line) {
    std::set<int> known = scan_.sizedTools;
    for (auto const &tool : scan_.comments.tools())
        known.insert(tool.first);
    for (auto const &tool : beside_)
        known.insert(tool.first);
    known.erase(0);
    if (known.empty() || (known.size() > 1 && scan_.hasToolSelects)) return false;
    current_ = idOf(*known.begin());
    if (known.size() > 1) tally_.add(DrillTrouble::ToolsInTurn, line);
    return true;
}

int DrillToolBox::current(std::size_t line) {
    if (current_ < 0 && !hasSelected_ && choose(line) && scan_.hasToolSelects)
        tally_.add(DrillTrouble::OnlyTool, line);
    if (current_ >= 0 && current_ != lastUsed_) used_.insert(lastUsed_ = current_);
    return current_;
}

void DrillToolBox::advance(std::size_t line) {
    if (current_ < 0 && !choose(line)) return;
    std::set<int> known = scan_.sizedTools;
    for (auto const &tool : scan_.comments.tools())
        known.insert(tool.first);
    for (auto const &tool : beside_)
        known.insert(tool.first);
    const auto next = known.upper_bound(numbers_[current_]);
    current_ = idOf(next != known.end() ? *next : numbers_[current_] + 1);
}

std::map<int, DrillTool> DrillToolBox::finished(DrillComments const &comments) const {
    std::map<int, DrillTool> result = tools_;
    for (auto &[id, tool] : result) {
        const int number = numbers_.at(id);
        const auto told = comments.tools().find(number);
        const auto other = beside_.find(number);
        if (told != comments.tools().end()) {
            if (!(tool.diameter > 0.0)) tool.diameter = sizeOf(told->second, sizeUnit_);
            if (!tool.plated) tool.plated = told->second.plated;
        }
        if (other != beside_.end()) {
            if (!(tool.diameter > 0.0)) tool.diameter = other->second.diameter;
            if (!tool.plated) tool.plated = other->second.plated;
        }
        if (!tool.plated) tool.plated = comments.plated();
    }
    return result;
}

} // namespace EDA::Fabrication
