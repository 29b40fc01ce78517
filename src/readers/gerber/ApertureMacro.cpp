// Macro statements, variables and expressions.
#include "readers/gerber/ApertureMacro.h"

#include "host/EntityModel/MathsExpressionParser.h"
#include "model/EDAOutline.h"
#include "readers/gerber/Aperture.h"
#include "readers/gerber/OutlineSize.h"

#include <algorithm>
#include <charconv>
#include <string_view>

namespace EDA {

namespace {

// In one step of work.
constexpr std::size_t bytesOfStep = 16; // of expressions
constexpr std::size_t fieldsOfStep = 8; // copied

bool isOperator(const std::string &field) {
    return field == "+" || field == "-" || field == "/" || field == "x" || field == "X";
}

// From left to right once; what was put in is not looked at again, so a text that names itself ends.
std::string replaced(const std::string &text, std::string_view what, const std::string &with,
                     std::size_t limit) {
    std::string result;
    std::size_t begin = 0;
    for (std::size_t found = text.find(what); found != std::string::npos && result.size() <= limit;
         found = text.find(what, begin)) {
        result.append(text, begin, found - begin).append(with);
        begin = found + what.size();
    }
    return result.append(text, begin, std::string::npos);
}

std::size_t textSizeOf(const std::map<std::string, std::string> &parameters) {
    std::size_t size = 0;
    for (const auto &[key, value] : parameters)
        size += key.size() + value.size();
    return size;
}

// As a default stream writes it.
std::string sixDigits(double value) {
    char buffer[32];
    return {buffer, std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 6).ptr};
}

} // namespace

void ApertureMacro::addPrimitive(const Fields &fields) {
    Fields kept;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (!isOperator(fields[i])) {
            kept.push_back(fields[i]);
            continue;
        }
        if (kept.empty()) kept.emplace_back();
        kept.back() += fields[i] == "X" ? "x" : fields[i];
        if (i + 1 < fields.size()) kept.back() += fields[++i];
    }
    primitives_.push_back(std::move(kept));
}

bool ApertureMacro::takeFields(std::size_t count) {
    numFields_ += std::min(count, limits_.macroFields + 1); // which cannot overflow
    return numFields_ <= limits_.macroFields;
}

// A word of the limit that the macro goes beyond, if any.
std::string ApertureMacro::excess(const Parameters &parameters) const {
    if (isTooLong()) return "it has more than " + std::to_string(limits_.primitives) + " statements";
    if (numFields_ > limits_.macroFields)
        return "it has more than " + std::to_string(limits_.macroFields) + " fields";
    if (parameters.size() > limits_.parameters)
        return "it is given more than " + std::to_string(limits_.parameters) + " parameters";
    return {};
}

std::unique_ptr<EDAOutline> ApertureMacro::createOutline(Parameters &parameters) const {
    WorkBudget budget(limits_.macroWork);
    std::string problem;
    return createOutline(parameters, budget, problem);
}

std::unique_ptr<EDAOutline> ApertureMacro::createOutline(Parameters &parameters, WorkBudget &budget,
                                                         std::string &problem) const {
    if (primitives_.empty() && numFields_ <= limits_.macroFields) return nullptr;
    if (std::string text = excess(parameters); !text.empty()) {
        problem = std::move(text);
        return nullptr;
    }
    Aperture aperture(&budget);
    for (const Fields &statement : primitives_) {
        const bool isTaken = takeStatement(statement, parameters, aperture, budget, problem);
        if (budget.isUsedUp()) problem = "the macros of this file take too long";
        if (!isTaken || budget.isUsedUp()) return nullptr;
    }
    auto outline = std::make_unique<EDAOutline>(false);
    aperture.combineInto(*outline);
    outline->setName(name_);
    return outline;
}

// False where the macro cannot go on.
bool ApertureMacro::takeStatement(const Fields &statement, Parameters &parameters, Aperture &aperture,
                                  WorkBudget &budget, std::string &problem) const {
    if (!budget.spend(1 + statement.size() / fieldsOfStep)) return false;
    if (statement.size() == 1 && statement[0][0] == '$') {
        if (define(statement[0], parameters, budget)) return true;
        problem = "a variable has more than " + std::to_string(limits_.macroText) + " bytes";
        return false;
    }
    Fields fields = statement;
    if (!evaluateAll(fields, parameters, budget, problem)) return false;
    EDAOutline outline(false);
    if (!budget.spend(numRingSteps(fields))) return false;
    if (buildPrimitive(outline, fields)) {
        if (budget.spend(countPoints(outline))) aperture.addOutline(outline);
    } else if (isTooLarge(fields)) {
        problem = "primitives of more than " + std::to_string(limits_.vertices) + " vertices or " +
                  std::to_string(limits_.rings) + " rings are left out";
    }
    return true;
}

// An expression costs no more than a look at its text and at those of all variables, once.
bool ApertureMacro::evaluateAll(Fields &fields, const Parameters &parameters, WorkBudget &budget,
                                std::string &problem) const {
    if (parameters.empty()) return true;
    std::size_t textSize = 0; // once there is an expression: few primitives have any
    for (std::string &field : fields) {
        if (field.find('$') == std::string::npos) continue;
        if (textSize == 0) textSize = textSizeOf(parameters);
        const bool isReplaced = field.find('X') != std::string::npos;
        const std::size_t cost = field.size() * (isReplaced ? parameters.size() : 1) + textSize;
        if (!budget.spend(1 + cost / bytesOfStep)) return true; // which is told once for all
        if (evaluate(field, parameters)) continue;
        problem = "an expression is too long or nested too deeply";
        return false;
    }
    return true;
}

// The value stays text. Its own former value is put in its place.
bool ApertureMacro::define(const std::string &definition, Parameters &parameters, WorkBudget &budget) const {
    const std::size_t equals = definition.find('=');
    if (equals == std::string::npos || equals == 0) return true;
    const std::string key = definition.substr(0, equals);
    std::string value = definition.substr(equals + 1);
    const auto known = parameters.find(key);
    if (known != parameters.end() && key.size() <= value.size()) {
        value = replaced(value, key, known->second, limits_.macroText);
    }
    if (value.size() > limits_.macroText) return false;
    budget.spend(value.size() / bytesOfStep);
    parameters[key] = std::move(value);
    return true;
}

// Intended: beside an "X", variables are replaced as plain text, so that "$1" is also taken out of "$10".
bool ApertureMacro::evaluate(std::string &field, const Parameters &parameters) const {
    if (field.find('X') != std::string::npos) {
        for (const auto &[key, value] : parameters) {
            field = replaced(field, key, value, limits_.macroText);
            if (field.size() > limits_.macroText) return false;
        }
        std::replace(field.begin(), field.end(), 'X', 'x');
    }
    EntityModel::MathsExpressionParser parser(field);
    const double value = parser.evaluate(parameters);
    if (parser.isLimitHit()) return false;
    field = sixDigits(value);
    return true;
}

} // namespace EDA
