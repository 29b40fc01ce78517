// Loading XML documents of a limited size.
#include "readers/XmlDetail.h"

#include <QBuffer>
#include <QXmlSimpleReader>

#include <algorithm>
#include <set>

namespace EDA {

// The toolkit calls its event interface out of date, but a document can be refused while it is read through
// nothing else. A scan beforehand would cost a third of the time of the whole read, and would have to
// agree with the parser on every malformed document.
QT_WARNING_PUSH
QT_WARNING_DISABLE_DEPRECATED

namespace {

// Entities may make a small document grow by this much beyond what its bytes could say by themselves.
constexpr std::size_t growth = 64 * 1024;

// The parser gathers a text in one of the toolkit's, which hold a little less than a gibibyte of characters.
constexpr std::size_t largestText = 1'000'000'000;

// Most that the parser makes of an entity that names others.
constexpr std::size_t nestedEntity = 4096;

// What is made of a document's elements and texts. Each is false to stop the parser.
class XmlTarget {
public:
    virtual ~XmlTarget() = default;
    virtual bool beginElement(const QString &localName, const QXmlAttributes &attributes) = 0;
    virtual bool addText(const QString &text) = 0;
    virtual bool endElement() = 0;
};

// Hands elements and texts on, and stops the parser where a document gets too large. All else that a document
// holds is counted, but not handed on: no reader asks for it.
class XmlGuard : public QXmlDefaultHandler {
public:
    XmlGuard(const XmlLimits &limits, std::size_t bytes, XmlTarget &target)
        : limits_(limits), bytes_(bytes), target_(target) {}

    bool startElement(const QString &, const QString &name, const QString &prefixed,
                      const QXmlAttributes &attributes) override {
        if (++depth_ > limits_.depth || !takeNode(prefixed) || !takeAttributes(attributes)) return false;
        return target_.beginElement(name, attributes);
    }
    bool endElement(const QString &, const QString &, const QString &) override {
        --depth_;
        return target_.endElement();
    }
    bool characters(const QString &text) override { return takeNode(text) && target_.addText(text); }

    bool startPrefixMapping(const QString &prefix, const QString &space) override {
        prefixes_.insert(prefix);
        return prefixes_.size() <= limits_.prefixes && takeText(prefix) && takeText(space);
    }
    bool endPrefixMapping(const QString &prefix) override {
        prefixes_.erase(prefix);
        return true;
    }
    bool comment(const QString &text) override { return takeNode(text); }
    bool processingInstruction(const QString &target, const QString &data) override {
        return takeNode(target) && takeText(data);
    }
    bool skippedEntity(const QString &name) override { return takeNode(name); }

    bool internalEntityDecl(const QString &, const QString &text) override {
        const std::size_t length = static_cast<std::size_t>(text.size());
        const bool isNested = text.contains(QLatin1Char('&'));
        longestEntity_ = std::max(longestEntity_, isNested ? std::max(length, nestedEntity) : length);
        return takeEntity();
    }
    bool externalEntityDecl(const QString &, const QString &, const QString &) override {
        return takeEntity();
    }

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
    XmlTarget &target_;
    std::set<QString> prefixes_; // that hold where the parser is
    int depth_ = 0;
    std::size_t nodes_ = 0, characters_ = 0, entities_ = 0, longestEntity_ = 0;
};

class TreeTarget : public XmlTarget {
public:
    explicit TreeTarget(XmlTree &tree) : tree_(tree) {}
    bool beginElement(const QString &localName, const QXmlAttributes &attributes) override {
        if (!tree_.beginElement(localName)) return false;
        for (int i = 0; i < attributes.count(); ++i)
            if (!tree_.addAttribute(attributes.localName(i), attributes.value(i))) return false;
        return true;
    }
    bool addText(const QString &text) override { return tree_.addText(text); }
    bool endElement() override { return tree_.endElement(); }

private:
    XmlTree &tree_;
};

// Stops at the first element.
class FirstElement : public XmlTarget {
public:
    bool beginElement(const QString &localName, const QXmlAttributes &) override {
        name_ = localName;
        return false;
    }
    bool addText(const QString &) override { return true; }
    bool endElement() override { return true; }
    const QString &name() const { return name_; }

private:
    QString name_;
};

// With namespaces resolved, and without texts that are nothing but blanks.
bool parse(QIODevice &device, std::size_t bytes, const XmlLimits &limits, XmlTarget &target) {
    XmlGuard guard(limits, bytes, target);
    QXmlSimpleReader reader;
    reader.setFeature("http://xml.org/sax/features/namespaces", true);
    reader.setFeature("http://xml.org/sax/features/namespace-prefixes", false);
    reader.setFeature("http://trolltech.com/xml/features/report-whitespace-only-CharData", false);
    reader.setContentHandler(&guard);
    reader.setLexicalHandler(&guard);
    reader.setDeclHandler(&guard);
    QXmlInputSource source(&device); // by pieces, where a byte array would be turned into text as a whole
    return reader.parse(source);
}

} // namespace

bool loadXml(const std::string &text, const XmlLimits &limits, XmlTree &tree) {
    if (text.size() > largestText) return false;
    QByteArray bytes = QByteArray::fromRawData(text.data(), static_cast<int>(text.size()));
    QBuffer buffer(&bytes);
    TreeTarget target(tree);
    return buffer.open(QIODevice::ReadOnly) && parse(buffer, text.size(), limits, target);
}

QString firstElement(QIODevice &device, std::size_t size, const XmlLimits &limits) {
    FirstElement first;
    parse(device, size, limits, first);
    return first.name();
}

QT_WARNING_POP

} // namespace EDA
