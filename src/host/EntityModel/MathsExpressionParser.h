// Evaluates arithmetic expressions with named variables.
#pragma once

#include <map>
#include <string>

namespace EntityModel {

namespace MathsExpressionLimits {
constexpr int depth = 64;       // of brackets, signs, powers and variables that name expressions
constexpr int steps = 100000;   // values met in one evaluation
constexpr int textSize = 65536; // bytes of an expression or of a variable's text
} // namespace MathsExpressionLimits

// Numbers (in the C locale), variables, + - * / ^, unary signs and brackets, with the usual precedence; "^"
// binds to the right and before a sign. "x" and "X" between two values multiply. Also knows the functions
// sin, cos, tan (degrees), sqrt, abs, min and max.
//
// A variable's name is letters, digits and "_" behind a letter, "_" or "$"; behind "$" and a digit it is
// digits alone, so that "$1x$2" is a product. A variable's text may be an expression itself; its value counts
// as if it stood in brackets, and it is evaluated once an evaluation, however often it is named.
class MathsExpressionParser {
public:
    explicit MathsExpressionParser(const std::string &expression) : expression_(expression) {}

    // The value. Bad syntax, an unknown variable, a limit hit, or a result that is not finite gives 0.0, and
    // isValid() is false afterwards.
    double evaluate(const std::map<std::string, std::string> &variables);

    bool isValid() const { return valid_; }
    bool isLimitHit() const { return limitHit_; }       // whether a limit is what made it invalid
    const std::string &error() const { return error_; } // what is wrong and where, else empty

private:
    std::string expression_;
    bool valid_ = true;
    bool limitHit_ = false;
    std::string error_;
};

} // namespace EntityModel
