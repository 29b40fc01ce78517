// Evaluates arithmetic expressions with named variables.
#include "host/EntityModel/MathsExpressionParser.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>
#include <unordered_map>

namespace EntityModel {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; }

double radians(double degrees) { return degrees * 3.14159265358979323846 / 180.0; }

double sine(double degrees) { return std::sin(radians(degrees)); }
double cosine(double degrees) { return std::cos(radians(degrees)); }
double tangent(double degrees) { return std::tan(radians(degrees)); }
double root(double value) { return std::sqrt(value); }
double absolute(double value) { return std::fabs(value); }
double least(double a, double b) { return std::fmin(a, b); }
double greatest(double a, double b) { return std::fmax(a, b); }

struct FunctionRow {
    std::string_view name;
    double (*ofOne)(double);
    double (*ofMany)(double, double);
};

const FunctionRow functions[] = {
    {"sin", sine, nullptr},     {"cos", cosine, nullptr}, {"tan", tangent, nullptr},  {"sqrt", root, nullptr},
    {"abs", absolute, nullptr}, {"min", nullptr, least},  {"max", nullptr, greatest},
};

// One evaluation. Each variable is evaluated once, however often it is named.
class Evaluation {
public:
    explicit Evaluation(const std::map<std::string, std::string> &variables) : variables_(variables) {}

    double run(std::string_view expression) {
        const double value = evaluateText(expression);
        if (error_.empty() && !std::isfinite(value)) error_ = "the result is not a finite number";
        return error_.empty() ? value : 0.0;
    }

    const std::string &error() const { return error_; }
    bool isLimitHit() const { return isLimitHit_; }

private:
    // Counts one level of nesting for as long as it lives.
    class Level {
    public:
        explicit Level(Evaluation &evaluation) : depth_(evaluation.depth_) {
            if (++depth_ > MathsExpressionLimits::depth) evaluation.hitLimit("it is nested too deeply");
        }
        ~Level() { --depth_; }
        Level(const Level &) = delete;
        Level &operator=(const Level &) = delete;

    private:
        int &depth_;
    };

    void hitLimit(const std::string &what) {
        isLimitHit_ = true;
        fail(what);
    }

    double fail(const std::string &what) {
        if (error_.empty())
            error_ = what + " at character " + std::to_string(place_ + 1) + " of \"" + start() + "\"";
        return 0.0;
    }

    std::string start() const {
        constexpr size_t most = 40;
        return std::string(text_.substr(0, most)) + (text_.size() > most ? "..." : "");
    }

    double evaluateText(std::string_view text) {
        const std::string_view outerText = text_;
        const size_t outerPlace = place_;
        text_ = text;
        place_ = 0;
        double value = 0.0;
        if (text.size() > static_cast<size_t>(MathsExpressionLimits::textSize)) {
            hitLimit("it is too long");
        } else {
            value = sum();
            if (peek() != '\0' || place_ < text_.size()) fail("unexpected text");
        }
        text_ = outerText;
        place_ = outerPlace;
        return value;
    }

    char peek() {
        while (place_ < text_.size() && (text_[place_] == ' ' || text_[place_] == '\t'))
            ++place_;
        return place_ < text_.size() ? text_[place_] : '\0';
    }

    bool take(char c) {
        if (peek() != c || place_ >= text_.size()) return false;
        ++place_;
        return true;
    }

    double sum() {
        double value = product();
        while (error_.empty()) {
            if (take('+')) {
                value += product();
            } else if (take('-')) {
                value -= product();
            } else {
                break;
            }
        }
        return value;
    }

    double product() {
        double value = signedPower();
        while (error_.empty()) {
            if (take('*') || take('x') || take('X')) {
                value *= signedPower();
            } else if (take('/')) {
                value /= signedPower();
            } else {
                break;
            }
        }
        return value;
    }

    double signedPower() {
        const Level level(*this);
        if (!error_.empty()) return 0.0;
        if (take('-')) return -signedPower();
        if (take('+')) return signedPower();
        const double base = primary();
        return error_.empty() && take('^') ? std::pow(base, signedPower()) : base;
    }

    double primary() {
        if (++steps_ > MathsExpressionLimits::steps) hitLimit("it takes too many steps");
        if (!error_.empty()) return 0.0;
        const char c = peek();
        if (isDigit(c) || c == '.') return number();
        if (take('(')) {
            const double value = sum();
            return take(')') ? value : fail("\")\" is missing");
        }
        if (isLetter(c) || c == '$') return named();
        return fail("a value is missing");
    }

    double number() {
        double value = 0.0;
        const char *const from = text_.data() + place_;
        const auto read = std::from_chars(from, text_.data() + text_.size(), value);
        if (read.ec != std::errc()) return fail("bad number");
        place_ += static_cast<size_t>(read.ptr - from);
        return value;
    }

    // "$1x$2" is a product: behind "$" and a digit only digits belong to the name.
    std::string takeName() {
        const size_t from = place_;
        place_ += text_[place_] == '$' ? 1 : 0;
        const bool digitsOnly = place_ > from && place_ < text_.size() && isDigit(text_[place_]);
        const auto belongs = [&](char c) { return isDigit(c) || (!digitsOnly && isLetter(c)); };
        while (place_ < text_.size() && belongs(text_[place_]))
            ++place_;
        return std::string(text_.substr(from, place_ - from));
    }

    double named() {
        const std::string name = takeName();
        const auto *const function = std::find_if(std::begin(functions), std::end(functions),
                                                  [&](const FunctionRow &row) { return row.name == name; });
        if (function != std::end(functions) && take('(')) return call(*function);
        const auto variable = variables_.find(name);
        if (variable == variables_.end()) return fail("unknown variable \"" + name.substr(0, 40) + "\"");
        const auto known = known_.find(name);
        if (known != known_.end()) return known->second;
        const double value = evaluateText(variable->second);
        known_.emplace(name, value);
        return value;
    }

    double call(const FunctionRow &function) {
        double value = sum();
        if (function.ofOne) value = function.ofOne(value);
        while (function.ofMany && error_.empty() && take(','))
            value = function.ofMany(value, sum());
        return take(')') ? value : fail("\")\" is missing");
    }

    const std::map<std::string, std::string> &variables_;
    std::unordered_map<std::string, double> known_;
    std::string_view text_; // being evaluated
    size_t place_ = 0;      // in text_
    int depth_ = 0;
    int steps_ = 0;
    bool isLimitHit_ = false;
    std::string error_;
};

} // namespace

double MathsExpressionParser::evaluate(const std::map<std::string, std::string> &variables) {
    Evaluation evaluation(variables);
    const double value = evaluation.run(expression_);
    error_ = evaluation.error();
    valid_ = error_.empty();
    limitHit_ = evaluation.isLimitHit();
    return value;
}

} // namespace EntityModel
