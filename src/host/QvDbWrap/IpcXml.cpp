// Walks an XML document forward, element by element, within limits.
#include "host/QvDbWrap/IpcXml.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <stdexcept>
#include <system_error>

namespace QvDbWrap {

namespace {

// Characters that all references to entities of a document may add to it. A reference takes three bytes.
constexpr std::int64_t maxGrowth = 16 * 1024 * 1024;
constexpr std::int64_t bytesOfReference = 3;
constexpr std::int64_t maxEntity = 4096;

int longestEntity(std::int64_t bytes) {
    return static_cast<int>(std::min(maxEntity, maxGrowth / (bytes / bytesOfReference + 1)));
}

// The whole text as a number; a plus in front is allowed.
bool readNumber(const char *text, const char *end, double &value) {
    const bool hasPlus = text != end && *text == '+';
    if (hasPlus) ++text;
    if (text == end || (hasPlus && *text == '-')) return false;
    const auto result = std::from_chars(text, end, value);
    return result.ec == std::errc() && result.ptr == end && std::isfinite(value);
}

} // namespace

IpcXml::IpcXml(const std::string &file) : bytes_(file) { start(); }

IpcXml::IpcXml(const QByteArray &document) : bytes_(document) { start(); }

// The prefixes of names are looked up for nothing where names are compared without them.
void IpcXml::start() {
    stream_.setDevice(&bytes_);
    stream_.setNamespaceProcessing(false);
    stream_.setEntityExpansionLimit(longestEntity(bytes_.sourceSize()));
}

void IpcXml::openRoot() {
    while (depth_ == 0)
        if (next() == QXmlStreamReader::EndDocument) fail("the document has no element");
}

QStringRef IpcXml::value(const char *attribute) const {
    return stream_.attributes().value(QLatin1String(attribute));
}

bool IpcXml::has(const char *attribute) const {
    return stream_.attributes().hasAttribute(QLatin1String(attribute));
}

std::string IpcXml::text(const char *attribute) const { return value(attribute).toString().toStdString(); }

double IpcXml::number(const char *attribute, double fallback) const {
    char text[400]; // the longest double that is written out in full
    const QStringRef given = value(attribute).trimmed();
    if (given.isEmpty() || given.size() > static_cast<int>(sizeof text)) return fallback;
    char *end = text;
    for (const QChar character : given)
        *end++ = character.unicode() < 128 ? static_cast<char>(character.unicode()) : '?';
    double number = 0;
    return readNumber(text, end, number) ? number : fallback;
}

bool IpcXml::flag(const char *attribute, bool fallback) const {
    if (!has(attribute)) return fallback;
    const QStringRef given = value(attribute).trimmed();
    return given == QLatin1String("1") || given.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0;
}

bool IpcXml::nextChild(int level) {
    while (true) {
        const QXmlStreamReader::TokenType token = next();
        if (token == QXmlStreamReader::StartElement) return true;
        if (depth_ < level || token == QXmlStreamReader::EndDocument) return false;
    }
}

void IpcXml::skipTo(int level) {
    while (depth_ > level)
        next();
}

QXmlStreamReader::TokenType IpcXml::next() {
    const QXmlStreamReader::TokenType token = stream_.readNext();
    if (token == QXmlStreamReader::StartElement) {
        if (++depth_ > maxDepth) fail("elements are nested too deep");
        if (stream_.attributes().size() > maxAttributes) fail("an element with too many attributes");
    } else if (token == QXmlStreamReader::EndElement) {
        --depth_;
    } else if (token == QXmlStreamReader::Invalid) {
        fail(bytes_.refusal().empty() ? stream_.errorString().toStdString() : bytes_.refusal());
    }
    return token;
}

void IpcXml::fail(const std::string &reason) const {
    throw std::runtime_error("line " + std::to_string(stream_.lineNumber()) + ", column " +
                             std::to_string(stream_.columnNumber()) + ": " + reason);
}

} // namespace QvDbWrap
