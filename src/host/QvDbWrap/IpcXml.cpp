// Walks an XML document forward, element by element, within limits.
#include "host/QvDbWrap/IpcXml.h"

#include <charconv>
#include <cmath>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace QvDbWrap {

namespace {

// The whole text as a number; a plus in front is allowed.
bool readNumber(const char *text, const char *end, double &value) {
    const bool hasPlus = text != end && *text == '+';
    if (hasPlus) ++text;
    if (text == end || (hasPlus && *text == '-')) return false;
    const auto result = std::from_chars(text, end, value);
    return result.ec == std::errc() && result.ptr == end && std::isfinite(value);
}

std::uint64_t hashOf(const std::string &text) {
    std::uint64_t hash = 14695981039346656037u;
    for (const char c : text)
        hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211u;
    return hash;
}

std::string inHexadecimal(std::uint64_t number) {
    std::string digits(16, '0');
    for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit, number >>= 4)
        *digit = "0123456789abcdef"[number & 15];
    return digits;
}

} // namespace

IpcXml::IpcXml(const std::string &file) : bytes_(file) { start(); }

IpcXml::IpcXml(const QByteArray &document) : bytes_(document) { start(); }

// The prefixes of names are looked up for nothing where names are compared without them.
void IpcXml::start() {
    stream_.setDevice(&bytes_);
    stream_.setNamespaceProcessing(false);
    stream_.setEntityExpansionLimit(0); // those of XML itself are shorter than their names
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

std::string IpcXml::text(const char *attribute) const {
    std::string text = value(attribute).toString().toStdString();
    if (text.size() <= maxText) return text;
    ++numShortened_;
    return shortened(std::move(text));
}

std::string IpcXml::shortened(std::string text) {
    if (text.size() <= maxText) return text;
    const std::string end = '~' + inHexadecimal(hashOf(text));
    std::size_t length = maxText - end.size();
    const auto isInsideOfCharacter = [&] {
        return (static_cast<unsigned char>(text[length]) & 0xc0) == 0x80;
    };
    while (length > maxText - end.size() - 3 && isInsideOfCharacter())
        --length;
    text.resize(length);
    return text + end;
}

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
    } else if (token == QXmlStreamReader::DTD) {
        fail(IpcProlog::documentTypeFound);
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
