// Guesses of number formats and units from all coordinates of a file.
#include "fabrication/layers/LayerGuesses.h"

#include "fabrication/layers/StatementLexer.h"

#include <algorithm>
#include <cmath>

namespace EDA::Fabrication {

namespace {

char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

void surveyNumber(const char *&at, const char *end, LayerSurvey &survey) {
    const char *first = at;
    const Digits digits = takeDigits(at, end);
    if (digits.decimals >= 0 || digits.count == 0) return;
    if (first != end && (*first == '-' || *first == '+')) ++first;
    survey.hasLeadingZeros = survey.hasLeadingZeros || (*first == '0' && digits.count > 1);
    survey.hasUneven = survey.hasUneven || (survey.mostDigits != 0 && survey.mostDigits != digits.count);
    survey.mostDigits = std::max(survey.mostDigits, digits.count);
    survey.mostValue = std::max(survey.mostValue, std::abs(digits.value));
}

void surveyStatement(std::string_view text, LayerSurvey &survey) {
    const char *end = text.data() + text.size();
    for (const char *at = text.data(); at != end;) {
        const char c = upper(*at++);
        if (c == 'X' || c == 'Y') surveyNumber(at, end, survey);
        if ((c == 'I' || c == 'J') && takeDigits(at, end).value < 0) survey.hasSignedOffset = true;
        if (c != 'G' || survey.unit != Unit::Unknown) continue;
        const std::int64_t code = takeDigits(at, end).value;
        if (code == 70) survey.unit = Unit::Inch;
        if (code == 71) survey.unit = Unit::Millimetre;
    }
}

void surveyCommand(std::string_view text, LayerSurvey &survey) {
    if (survey.unit != Unit::Unknown || text.size() < 4 || upper(text[0]) != 'M' || upper(text[1]) != 'O')
        return;
    if (upper(text[2]) == 'I') survey.unit = Unit::Inch;
    if (upper(text[2]) == 'M') survey.unit = Unit::Millimetre;
}

} // namespace

LayerSurvey surveyOf(std::string_view bytes) {
    LayerSurvey survey;
    StatementLexer lexer(bytes);
    Word word;
    std::string_view comment;
    while (lexer.next(word)) {
        if (isExtended(word.text))
            surveyCommand(word.text, survey);
        else if (!isComment(word.text, comment))
            surveyStatement(word.text, survey);
    }
    return survey;
}

// Old plotters took two digits and four of an inch; finer files have more digits after the point.
CoordinateFormat guessedFormat(LayerSurvey const &survey, Unit unit) {
    CoordinateFormat format;
    const int most = std::max(survey.mostDigits, 6);
    const int integers = unit == Unit::Millimetre ? 3 : 2;
    const int decimals = std::min(most - integers, 6);
    format.integerDigits = {integers, integers};
    format.decimalDigits = {decimals, decimals};
    // Whoever writes zeros in front of numbers of different lengths leaves them off behind.
    format.omitsTrailing = survey.hasLeadingZeros && survey.hasUneven;
    return format;
}

Unit guessedUnit(LayerSurvey const &survey, CoordinateFormat const &format) {
    constexpr double mostInches = 40.0;
    const double reach = format.omitsTrailing ? 0.0
                                              : static_cast<double>(survey.mostValue) /
                                                    std::pow(10.0, format.decimalDigits[0]);
    const bool isFine = format.integerDigits[0] >= 4 && format.decimalDigits[0] >= 5;
    return reach > mostInches || isFine ? Unit::Millimetre : Unit::Inch;
}

} // namespace EDA::Fabrication
