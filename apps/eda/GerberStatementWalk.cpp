// The statements of a Gerber or drill file with their lines.
#include "GerberStatementWalk.h"

#include "readers/gerber/GerberLines.h"

#include <algorithm>

namespace EDATool {

namespace {

constexpr std::size_t textLimit = std::size_t(64) << 20; // of a joined statement

// Lines with their numbers; empty ones count and are passed over.
class NumberedLines {
public:
    explicit NumberedLines(std::string_view text) : text_(text) {}

    bool next(std::string_view &line) {
        while (position_ < text_.size()) {
            const std::size_t end = std::min(text_.find_first_of("\r\n", position_), text_.size());
            line = EDA::trimmed(text_.substr(position_, end - position_));
            const bool isPair = text_.substr(end, 2) == "\r\n";
            position_ = end + (isPair ? 2 : 1);
            ++number_;
            if (!line.empty()) return true;
        }
        return false;
    }
    std::size_t number() const { return number_; }

private:
    std::string_view text_;
    std::size_t position_ = 0;
    std::size_t number_ = 0;
};

bool hasOnePercent(std::string_view line) {
    return line.front() == '%' && line.find('%', 1) == std::string_view::npos;
}

bool startsDrilling(std::string_view statement) {
    return EDA::startsWith(statement, "M48") || EDA::startsWith(statement, "T");
}

} // namespace

void walkGerberStatements(std::string_view text, const std::function<void(const GerberStatement &)> &handle) {
    NumberedLines lines(text);
    std::string joined;
    bool isDrill = false;
    for (std::string_view line; lines.next(line);) {
        const std::size_t number = lines.number();
        const bool isLone = line == "%";
        bool swallows = false;
        if (!isDrill && hasOnePercent(line)) {
            joined = line;
            bool isOpen = true;
            while (isOpen && joined.size() < textLimit && lines.next(line)) {
                joined += line;
                isOpen = line.find('%') == std::string_view::npos;
                if (EDA::startsWith(joined, "%M48")) {
                    joined.erase(0, 1);
                    isOpen = false;
                }
            }
            line = joined;
            swallows = isLone && line.front() == '%' && line.find('*') == std::string_view::npos;
        }
        if (isDrill) {
            handle({line, number, true, false});
            continue;
        }
        EDA::GerberStatements statements(line);
        for (std::string_view statement; statements.next(statement);) {
            isDrill = isDrill || startsDrilling(statement);
            handle({statement, number, isDrill, swallows});
        }
    }
}

} // namespace EDATool
