// Shapes of macros: variables, expressions and the order of primitives.
#include "fabrication/apertures/ApertureMaker.h"
#include "fabrication/apertures/MacroExpression.h"
#include "fabrication/apertures/MacroPainter.h"
#include "fabrication/Limits.h"

#include <charconv>

namespace EDA::Fabrication {

namespace {

constexpr std::string_view blanks = " \t\r\n";

std::string_view trimmed(std::string_view text) {
    std::size_t const begin = text.find_first_not_of(blanks);
    if (begin == std::string_view::npos) return {};
    return text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

bool isOperator(std::string_view field) {
    return field.size() == 1 && std::string_view("+-/xX").find(field[0]) != std::string_view::npos;
}

// Some files break an expression at a comma, so that an operator stands alone: it joins its neighbours.
std::vector<std::string> fieldsOf(std::string_view statement) {
    std::vector<std::string> fields;
    bool joins = false;
    while (true) {
        std::size_t const comma = statement.find(',');
        std::string_view const field = trimmed(statement.substr(0, comma));
        bool const isAlone = !fields.empty() && isOperator(field);
        if (joins || isAlone) {
            fields.back() += field;
        } else {
            fields.emplace_back(field);
        }
        joins = isAlone;
        if (comma == std::string_view::npos) return fields;
        statement.remove_prefix(comma + 1);
    }
}

// One macro with one set of parameters.
class Evaluation {
public:
    Evaluation(double millimetres, std::size_t maxVertices, Notes &notes, std::size_t line)
        : painter_(millimetres, maxVertices), notes_(notes), line_(line) {}

    void setParameters(std::vector<double> const &parameters) {
        for (std::size_t i = 0; i < parameters.size(); ++i)
            variables_[i + 1] = parameters[i];
    }

    void take(std::string_view statement) {
        if (statement.empty() || isComment(statement)) return;
        bool const isUnderstood = statement.front() == '$' ? define(statement) : draw(statement);
        if (!isUnderstood) leaveOut("macro statements with expressions that cannot be evaluated");
    }

    MacroPainter &painter() { return painter_; }

    void leaveOut(std::string_view what) { notes_.add(NoteKind::LeftOut, what, line_); }

private:
    // No other code starts with 0; whatever follows is text.
    static bool isComment(std::string_view statement) { return statement.front() == '0'; }

    bool define(std::string_view statement) {
        std::size_t const equals = statement.find('=');
        if (equals == std::string_view::npos) return false;
        std::string_view const name = trimmed(statement.substr(1, equals - 1));
        std::size_t index = 0;
        auto const end = std::from_chars(name.data(), name.data() + name.size(), index);
        double value = 0.0;
        if (end.ec != std::errc() || end.ptr != name.data() + name.size()) return false;
        if (!expression_.evaluate(statement.substr(equals + 1), value)) return false;
        variables_[index] = value;
        return true;
    }

    bool draw(std::string_view statement) {
        std::vector<double> values;
        for (std::string const &field : fieldsOf(statement)) {
            values.push_back(0.0);
            if (!field.empty() && !expression_.evaluate(field, values.back())) return false;
        }
        switch (painter_.paint(values)) {
        case MacroPainter::Result::Painted:
            break;
        case MacroPainter::Result::Unknown:
            leaveOut("macro primitives of an unknown kind");
            break;
        case MacroPainter::Result::Impossible:
            leaveOut("macro primitives with impossible modifiers");
            break;
        }
        return true;
    }

    MacroVariables variables_;
    std::size_t steps_ = Limits::macroSteps;
    MacroExpression expression_{variables_, steps_};
    MacroPainter painter_;
    Notes &notes_;
    std::size_t line_;
};

std::size_t textOf(Macro const &macro) {
    std::size_t size = macro.name.size();
    for (std::string const &statement : macro.statements)
        size += statement.size() + 1;
    return size;
}

} // namespace

Shape ApertureMaker::fromMacro(Macro const &macro, std::vector<double> const &parameters, std::size_t line) {
    Shape shape;
    std::size_t const text = textOf(macro);
    if (text > macroTextLeft_ || macroVerticesLeft_ == 0) {
        notes_.add(NoteKind::LeftOut, "apertures beyond what all macros of a file may cost", line);
        return shape;
    }
    macroTextLeft_ -= text;
    Evaluation evaluation(millimetres_, macroVerticesLeft_, notes_, line);
    evaluation.setParameters(parameters);
    for (std::string const &statement : macro.statements)
        evaluation.take(trimmed(statement));
    macroVerticesLeft_ = evaluation.painter().verticesLeft();
    if (!evaluation.painter().finish(shape.pieces)) {
        evaluation.leaveOut("macros whose primitives cross each other too often");
    }
    if (!shape.pieces.empty()) shape.kind = Shape::Kind::Pieces;
    shape.name = macro.name;
    return shape;
}

} // namespace EDA::Fabrication
