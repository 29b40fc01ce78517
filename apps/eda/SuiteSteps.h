// Which of the steps, that is the boards and panels, of a design is read.
#pragma once

#include "Design.h"
#include "readers/VelkinEDAReader.h"

#include <iosfwd>
#include <string>
#include <vector>

namespace EDATool {

// Asks on a terminal: a numbered list, then a line with a number or a name. An empty line and the end of the
// input cancel; what is neither is asked for again.
class TerminalStepChooser : public EDA::StepChooser {
public:
    TerminalStepChooser(std::istream &input, std::ostream &output) : input_(input), output_(output) {}
    std::optional<int> chooseStep(const std::vector<std::string> &steps) override;

private:
    std::istream &input_;
    std::ostream &output_;
};

// The step to read; empty for the one that the design itself names, or when it has but one. With --step, the
// one of that name; otherwise a document says itself which is meant, and of an archive somebody is asked, or
// the first in the order of the names is taken, with a warning. Throws UsageFailure naming the steps when
// there is none of that name, DesignFailure when the design can't be read, and a Failure for a cancelled
// question.
std::string chosenStep(const std::string &file, const DesignSettings &settings, Design &design);

// True for the extensions of archives, in which a reader looks for steps.
bool isArchive(const std::string &file);

} // namespace EDATool
