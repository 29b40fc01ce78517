// Arithmetic in the modifiers of macros.
#pragma once

#include <cstddef>
#include <map>
#include <string_view>

namespace EDA::Fabrication {

// Values by number: $1 is 1. What is not there is 0.
using MacroVariables = std::map<std::size_t, double>;

// Evaluates expressions with + - x X / ( ), signs, decimals and variables. Multiplication and division bind
// stronger; equals are done from left to right.
class MacroExpression {
public:
    // Each operation and variable takes one of the steps, which are shared by all expressions of an aperture.
    MacroExpression(MacroVariables const &variables, std::size_t &steps)
        : variables_(variables), steps_(steps) {}

    // False for what is no expression, has no finite value or goes beyond a limit.
    bool evaluate(std::string_view text, double &value);

private:
    bool sum(double &value);
    bool product(double &value);
    bool factor(double &value);
    bool atom(double &value);
    bool bracket(double &value);
    bool variable(double &value);
    bool number(double &value);

    // The next character that is no blank, 0 at the end.
    char peek();
    bool takeStep();

    MacroVariables const &variables_;
    std::size_t &steps_;
    std::string_view rest_;
    std::size_t depth_ = 0;
};

} // namespace EDA::Fabrication
