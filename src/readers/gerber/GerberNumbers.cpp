// Reading numbers, in the C locale always.
#include "readers/gerber/GerberNumbers.h"

#include "readers/gerber/GerberLines.h"

#include <charconv>
#include <cmath>

namespace EDA {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// A sign in front that std::from_chars does not take: a plus, unless another sign follows.
std::string_view withoutPlus(std::string_view text) {
    if (text.size() > 1 && text[0] == '+' && (isDigit(text[1]) || text[1] == '.')) text.remove_prefix(1);
    return text;
}

// std::from_chars also knows "inf" and "nan".
bool startsAsNumber(std::string_view text) {
    if (!text.empty() && text[0] == '-') text.remove_prefix(1);
    return !text.empty() && (isDigit(text[0]) || text[0] == '.');
}

template <typename Number> Number read(std::string_view text, bool whole) {
    text = withoutPlus(trimmed(text));
    Number value = 0;
    if (!startsAsNumber(text)) return value;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || (whole && end != text.data() + text.size())) return 0;
    return value;
}

} // namespace

int gerberInt(std::string_view text) { return read<int>(text, true); }
double gerberDouble(std::string_view text) { return read<double>(text, true); }
int leadingInt(std::string_view text) { return read<int>(text, false); }
double leadingDouble(std::string_view text) { return read<double>(text, false); }

} // namespace EDA
