// Loading XML documents of a limited depth.
#include "readers/XmlDetail.h"

#include <QBuffer>
#include <QXmlSimpleReader>

namespace EDA {

// The toolkit calls its event interface out of date, but a document can be refused while it is built through
// nothing else. A scan beforehand would cost a third of the time of the whole read, and would have to
// agree with the parser on every malformed document.
QT_WARNING_PUSH
QT_WARNING_DISABLE_DEPRECATED

namespace {

// Hands the parser's events on to what builds the document, and stops the parser where it is too deep.
class DepthGuard : public QXmlContentHandler {
public:
    explicit DepthGuard(int maxDepth) : maxDepth_(maxDepth) {}
    void setTarget(QXmlContentHandler *target) { target_ = target; }

    bool startElement(const QString &space, const QString &name, const QString &prefixed,
                      const QXmlAttributes &attributes) override {
        return ++depth_ <= maxDepth_ && target_->startElement(space, name, prefixed, attributes);
    }
    bool endElement(const QString &space, const QString &name, const QString &prefixed) override {
        --depth_;
        return target_->endElement(space, name, prefixed);
    }

    void setDocumentLocator(QXmlLocator *locator) override { target_->setDocumentLocator(locator); }
    bool startDocument() override { return target_->startDocument(); }
    bool endDocument() override { return target_->endDocument(); }
    bool startPrefixMapping(const QString &prefix, const QString &space) override {
        return target_->startPrefixMapping(prefix, space);
    }
    bool endPrefixMapping(const QString &prefix) override { return target_->endPrefixMapping(prefix); }
    bool characters(const QString &text) override { return target_->characters(text); }
    bool ignorableWhitespace(const QString &text) override { return target_->ignorableWhitespace(text); }
    bool processingInstruction(const QString &target, const QString &data) override {
        return target_->processingInstruction(target, data);
    }
    bool skippedEntity(const QString &name) override { return target_->skippedEntity(name); }
    QString errorString() const override { return target_->errorString(); }

private:
    QXmlContentHandler *target_ = nullptr;
    int maxDepth_;
    int depth_ = 0;
};

// The parser with the features that a document with namespaces is built with.
class GuardedReader : public QXmlSimpleReader {
public:
    explicit GuardedReader(int maxDepth) : guard_(maxDepth) {
        setFeature("http://xml.org/sax/features/namespaces", true);
        setFeature("http://xml.org/sax/features/namespace-prefixes", false);
        setFeature("http://trolltech.com/xml/features/report-whitespace-only-CharData", false);
    }
    void setContentHandler(QXmlContentHandler *handler) override {
        guard_.setTarget(handler);
        QXmlSimpleReader::setContentHandler(&guard_);
    }

private:
    DepthGuard guard_;
};

} // namespace

bool loadXml(const std::string &text, int maxDepth, QDomDocument &document) {
    QByteArray bytes = QByteArray::fromRawData(text.data(), static_cast<int>(text.size()));
    QBuffer buffer(&bytes);
    if (!buffer.open(QIODevice::ReadOnly)) return false;
    QXmlInputSource source(&buffer); // by pieces, where a byte array would be turned into text as a whole
    GuardedReader reader(maxDepth);
    return document.setContent(&source, &reader);
}

QT_WARNING_POP

QDomElement childOf(const QDomElement &parent, QLatin1String name) {
    for (QDomNode node = parent.firstChild(); !node.isNull(); node = node.nextSibling())
        if (node.isElement() && node.localName() == name) return node.toElement();
    return QDomElement();
}

QString childText(const QDomElement &parent, QLatin1String name) { return childOf(parent, name).text(); }

} // namespace EDA
