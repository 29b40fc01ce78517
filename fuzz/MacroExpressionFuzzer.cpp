// Any bytes as an expression with variables: the first line is the expression, each further one a text of $1,
// $2 and so on.
#include "host/EntityModel/MathsExpressionParser.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <sstream>
#include <string>

namespace {

// What a broken promise of the parser looks like to the fuzzer.
void require(bool promise) {
    if (!promise) std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    std::istringstream stream(std::string(reinterpret_cast<const char *>(data), size));
    std::string expression;
    std::getline(stream, expression);
    std::map<std::string, std::string> variables;
    for (std::string text; std::getline(stream, text);)
        variables["$" + std::to_string(variables.size() + 1)] = text;
    EntityModel::MathsExpressionParser parser(expression);
    const double value = parser.evaluate(variables);
    require(std::isfinite(value));
    require(parser.isValid() == parser.error().empty());
    require(parser.isValid() || value == 0.0);
    require(!parser.isLimitHit() || !parser.isValid());
    const bool isValid = parser.isValid();
    require(parser.evaluate(variables) == value && parser.isValid() == isValid);
    return 0;
}
