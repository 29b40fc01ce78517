// Loading XML documents of a limited size.
#include "readers/XmlDetail.h"

#include <QBuffer>
#include <QXmlSimpleReader>

#include <algorithm>
#include <set>

namespace EDA {

// The toolkit calls its event interface out of date, but a document can be refused while it is built through
// nothing else. A scan beforehand would cost a third of the time of the whole read, and would have to
// agree with the parser on every malformed document.
QT_WARNING_PUSH
QT_WARNING_DISABLE_DEPRECATED

namespace {

// Entities may make a small document grow by this much beyond what its bytes could say by themselves.
constexpr std::size_t growth = 64 * 1024;

// Most that the parser makes of an entity that names others.
constexpr std::size_t nestedEntity = 4096;

// Hands the parser's events on to what builds the document, and stops the parser where it gets too large.
// Declarations are counted but not handed on: no reader asks for them.
class XmlGuard : public QXmlContentHandler, public QXmlLexicalHandler, public QXmlDeclHandler {
public:
    XmlGuard(const XmlLimits &limits, std::size_t bytes) : limits_(limits), bytes_(bytes) {}
    void setTarget(QXmlContentHandler *target) { target_ = target; }
    void setTarget(QXmlLexicalHandler *target) { lexicalTarget_ = target; }

    bool startElement(const QString &space, const QString &name, const QString &prefixed,
                      const QXmlAttributes &attributes) override {
        if (++depth_ > limits_.depth || !takeNode(prefixed) || !takeAttributes(attributes)) return false;
        return target_->startElement(space, name, prefixed, attributes);
    }
    bool endElement(const QString &space, const QString &name, const QString &prefixed) override {
        --depth_;
        return target_->endElement(space, name, prefixed);
    }
    bool startPrefixMapping(const QString &prefix, const QString &space) override {
        prefixes_.insert(prefix);
        if (prefixes_.size() > limits_.prefixes || !takeText(prefix) || !takeText(space)) return false;
        return target_->startPrefixMapping(prefix, space);
    }
    bool endPrefixMapping(const QString &prefix) override {
        prefixes_.erase(prefix);
        return target_->endPrefixMapping(prefix);
    }
    bool characters(const QString &text) override { return takeNode(text) && target_->characters(text); }
    bool comment(const QString &text) override { return takeNode(text) && lexicalTarget_->comment(text); }
    bool processingInstruction(const QString &target, const QString &data) override {
        return takeNode(target) && takeText(data) && target_->processingInstruction(target, data);
    }
    bool skippedEntity(const QString &name) override {
        return takeNode(name) && target_->skippedEntity(name);
    }

    bool internalEntityDecl(const QString &, const QString &text) override {
        const std::size_t length = static_cast<std::size_t>(text.size());
        const bool isNested = text.contains(QLatin1Char('&'));
        longestEntity_ = std::max(longestEntity_, isNested ? std::max(length, nestedEntity) : length);
        return takeEntity();
    }
    bool externalEntityDecl(const QString &, const QString &, const QString &) override {
        return takeEntity();
    }
    bool attributeDecl(const QString &, const QString &, const QString &, const QString &,
                       const QString &) override {
        return true;
    }

    void setDocumentLocator(QXmlLocator *locator) override { target_->setDocumentLocator(locator); }
    bool startDocument() override { return target_->startDocument(); }
    bool endDocument() override { return target_->endDocument(); }
    bool ignorableWhitespace(const QString &text) override { return target_->ignorableWhitespace(text); }
    bool startDTD(const QString &name, const QString &publicId, const QString &systemId) override {
        return lexicalTarget_->startDTD(name, publicId, systemId);
    }
    bool endDTD() override { return lexicalTarget_->endDTD(); }
    bool startEntity(const QString &name) override { return lexicalTarget_->startEntity(name); }
    bool endEntity(const QString &name) override { return lexicalTarget_->endEntity(name); }
    bool startCDATA() override { return lexicalTarget_->startCDATA(); }
    bool endCDATA() override { return lexicalTarget_->endCDATA(); }
    QString errorString() const override { return target_->errorString(); }

private:
    // No document without entities has more characters than bytes, or more nodes than half of them: an
    // element takes four bytes, a text between two elements one.
    bool takeText(const QString &text) {
        characters_ += static_cast<std::size_t>(text.size());
        return characters_ <= bytes_ + growth;
    }
    bool takeNode(const QString &text) { return ++nodes_ <= bytes_ / 2 + growth && takeText(text); }

    bool takeAttributes(const QXmlAttributes &attributes) {
        if (static_cast<std::size_t>(attributes.count()) > limits_.attributes) return false;
        for (int i = 0; i < attributes.count(); ++i)
            if (!takeText(attributes.qName(i)) || !takeText(attributes.value(i))) return false;
        return true;
    }

    // A reference to an entity takes three bytes.
    bool takeEntity() {
        return ++entities_ <= limits_.entities && longestEntity_ <= limits_.entityText / (bytes_ / 3 + 1);
    }

    const XmlLimits limits_;
    const std::size_t bytes_;
    QXmlContentHandler *target_ = nullptr;
    QXmlLexicalHandler *lexicalTarget_ = nullptr;
    std::set<QString> prefixes_; // that hold where the parser is
    int depth_ = 0;
    std::size_t nodes_ = 0, characters_ = 0, entities_ = 0, longestEntity_ = 0;
};

// The parser with the features that a document with namespaces is built with.
class GuardedReader : public QXmlSimpleReader {
public:
    GuardedReader(const XmlLimits &limits, std::size_t bytes) : guard_(limits, bytes) {
        setFeature("http://xml.org/sax/features/namespaces", true);
        setFeature("http://xml.org/sax/features/namespace-prefixes", false);
        setFeature("http://trolltech.com/xml/features/report-whitespace-only-CharData", false);
        QXmlSimpleReader::setDeclHandler(&guard_);
    }
    void setContentHandler(QXmlContentHandler *handler) override {
        guard_.setTarget(handler);
        QXmlSimpleReader::setContentHandler(&guard_);
    }
    void setLexicalHandler(QXmlLexicalHandler *handler) override {
        guard_.setTarget(handler);
        QXmlSimpleReader::setLexicalHandler(&guard_);
    }
    void setDeclHandler(QXmlDeclHandler *) override {}
    void setDTDHandler(QXmlDTDHandler *) override {}

private:
    XmlGuard guard_;
};

// Stops at the first element.
class FirstElement : public QXmlDefaultHandler {
public:
    bool startElement(const QString &, const QString &name, const QString &,
                      const QXmlAttributes &) override {
        name_ = name;
        return false;
    }
    const QString &name() const { return name_; }

private:
    QString name_;
};

} // namespace

bool loadXml(const std::string &text, const XmlLimits &limits, QDomDocument &document) {
    QByteArray bytes = QByteArray::fromRawData(text.data(), static_cast<int>(text.size()));
    QBuffer buffer(&bytes);
    if (!buffer.open(QIODevice::ReadOnly)) return false;
    QXmlInputSource source(&buffer); // by pieces, where a byte array would be turned into text as a whole
    GuardedReader reader(limits, text.size());
    return document.setContent(&source, &reader);
}

QString firstElement(QIODevice &device, std::size_t size, const XmlLimits &limits) {
    FirstElement first;
    QXmlInputSource source(&device);
    GuardedReader reader(limits, size);
    reader.setContentHandler(&first);
    reader.setLexicalHandler(&first);
    reader.parse(source);
    return first.name();
}

QT_WARNING_POP

QDomElement childOf(const QDomElement &parent, QLatin1String name) {
    for (QDomNode node = parent.firstChild(); !node.isNull(); node = node.nextSibling())
        if (node.isElement() && node.localName() == name) return node.toElement();
    return QDomElement();
}

QString childText(const QDomElement &parent, QLatin1String name) { return childOf(parent, name).text(); }

} // namespace EDA
