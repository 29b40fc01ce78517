// Arithmetic of macros, by recursive descent.
#include "fabrication/apertures/MacroExpression.h"

#include "fabrication/Limits.h"

#include <charconv>
#include <cmath>

namespace EDA::Fabrication {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

} // namespace

bool MacroExpression::evaluate(std::string_view text, double &value) {
    value = 0.0;
    if (text.size() > Limits::macroText) return false;
    rest_ = text;
    depth_ = 0;
    double result = 0.0;
    if (!sum(result) || peek() != '\0' || !rest_.empty() || !std::isfinite(result)) return false;
    value = result;
    return true;
}

bool MacroExpression::sum(double &value) {
    if (!product(value)) return false;
    for (char c = peek(); c == '+' || c == '-'; c = peek()) {
        rest_.remove_prefix(1);
        double right = 0.0;
        if (!takeStep() || !product(right)) return false;
        value += c == '+' ? right : -right;
    }
    return true;
}

bool MacroExpression::product(double &value) {
    if (!factor(value)) return false;
    for (char c = peek(); c == 'x' || c == 'X' || c == '/'; c = peek()) {
        rest_.remove_prefix(1);
        double right = 0.0;
        if (!takeStep() || !factor(right)) return false;
        value = c == '/' ? value / right : value * right;
    }
    return true;
}

bool MacroExpression::factor(double &value) {
    bool isNegative = false;
    for (char c = peek(); c == '+' || c == '-'; c = peek()) {
        if (c == '-') isNegative = !isNegative;
        rest_.remove_prefix(1);
    }
    if (!atom(value)) return false;
    if (isNegative) value = -value;
    return true;
}

bool MacroExpression::atom(double &value) {
    char const c = peek();
    if (c == '(') return bracket(value);
    return c == '$' ? variable(value) : number(value);
}

bool MacroExpression::bracket(double &value) {
    if (++depth_ > Limits::expressionDepth) return false;
    rest_.remove_prefix(1);
    if (!sum(value) || peek() != ')') return false;
    rest_.remove_prefix(1);
    --depth_;
    return true;
}

bool MacroExpression::variable(double &value) {
    rest_.remove_prefix(1);
    std::size_t index = 0;
    auto const end = std::from_chars(rest_.data(), rest_.data() + rest_.size(), index);
    if (end.ec != std::errc() || !takeStep()) return false;
    rest_.remove_prefix(static_cast<std::size_t>(end.ptr - rest_.data()));
    auto const found = variables_.find(index);
    value = found == variables_.end() ? 0.0 : found->second;
    return true;
}

// Decimals have no exponent, but may lack digits on one side of their point.
bool MacroExpression::number(double &value) {
    char const c = peek();
    if (!isDigit(c) && c != '.') return false;
    auto const end =
        std::from_chars(rest_.data(), rest_.data() + rest_.size(), value, std::chars_format::fixed);
    if (end.ec != std::errc()) return false;
    rest_.remove_prefix(static_cast<std::size_t>(end.ptr - rest_.data()));
    return true;
}

char MacroExpression::peek() {
    while (!rest_.empty() && (rest_.front() == ' ' || rest_.front() == '\t' || rest_.front() == '\n' ||
                              rest_.front() == '\r')) {
        rest_.remove_prefix(1);
    }
    return rest_.empty() ? '\0' : rest_.front();
}

bool MacroExpression::takeStep() {
    if (steps_ == 0) return false;
    --steps_;
    return true;
}

} // namespace EDA::Fabrication
