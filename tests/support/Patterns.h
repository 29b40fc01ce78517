// Regular expressions over texts of tests: Qt's, since those of the standard library do not build without
// warnings under the sanitizers.
#pragma once

#include <QtCore/QRegularExpression>
#include <QtCore/QString>

#include <string>
#include <vector>

namespace EDA::test {

inline std::string replaced(const std::string &text, const char *pattern, const char *by) {
    return QString::fromStdString(text).replace(QRegularExpression(pattern), by).toStdString();
}

// What the first group of the pattern holds at each place where it fits; without a group, the whole.
inline std::vector<std::string> allMatches(const std::string &text, const char *pattern) {
    std::vector<std::string> found;
    auto matches = QRegularExpression(pattern).globalMatch(QString::fromStdString(text));
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        found.push_back(match.captured(match.lastCapturedIndex() > 0 ? 1 : 0).toStdString());
    }
    return found;
}

} // namespace EDA::test
