// The elements of an XML document, in as little memory as a walk over them needs.
#pragma once

#include "readers/ShorterFirst.h"
#include "readers/XmlLimits.h"

#include <QString>

#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

namespace EDA {

class XmlTree;

// One element of a tree, or none; valid as long as the tree stays as it is. One that is null has no name, no
// text, no attributes and no children.
class XmlElement {
public:
    XmlElement() = default;

    bool isNull() const { return !tree_; }
    const QString &localName() const;

    // All text in the element and in the elements within it, in order.
    QString text() const;

    // By the attribute's local name; of several with different prefixes the last. Empty without one.
    QString attribute(QLatin1String name) const;
    bool hasAttribute(QLatin1String name) const;

private:
    friend class XmlTree;
    template <typename Use> friend void eachChild(const XmlElement &parent, const Use &use);

    XmlElement(const XmlTree &tree, std::uint32_t index) : tree_(&tree), index_(index) {}

    const XmlTree *tree_ = nullptr;
    std::uint32_t index_ = 0;
};

// The elements lie in the order of their start tags, and all texts in one buffer: an element is a range of
// elements and a range of text, and neither has to be searched for. Comments, processing instructions,
// declarations and prefixes are not kept.
class XmlTree {
public:
    explicit XmlTree(const XmlLimits &limits) : limits_(limits) {}

    // The outermost element; null in an empty tree.
    XmlElement root() const { return elements_.empty() ? XmlElement() : XmlElement(*this, 0); }

    // The parts of a document in its order, for whoever builds the tree. False, with the part left out, when
    // it is one too many, or is not allowed where it stands: a second outermost element, an element without a
    // name, attributes or text outside of all elements.
    bool beginElement(const QString &localName);
    bool addAttribute(const QString &localName, const QString &value); // of the element that began last
    bool addText(const QString &text);
    bool endElement();

private:
    friend class XmlElement;
    template <typename Use> friend void eachChild(const XmlElement &parent, const Use &use);

    // Each reaches from its begin to the end.
    struct Element {
        std::uint32_t name;          // index
        std::uint32_t end;           // the first element behind this one and all within it
        std::uint32_t attributes;    // the first one; they reach to the next element's
        std::uint32_t text, textEnd; // places in the text
    };
    struct Attribute {
        std::uint32_t name;     // index
        std::uint32_t valueEnd; // place in the values, where the next one begins
    };

    bool hasRoom() const { return elements_.size() + attributes_.size() < limits_.nodes; }
    bool takeName(const QString &name, std::uint32_t &index);
    const Attribute *findAttribute(std::uint32_t element, QLatin1String name) const;

    XmlLimits limits_;
    std::vector<Element> elements_;
    std::vector<Attribute> attributes_;
    std::vector<QChar> text_, values_;
    std::vector<QString> names_;
    std::map<QString, std::uint32_t, ShorterFirst> indexes_; // of the names
    std::vector<std::uint32_t> open_;                        // elements that have not ended
};

// Calls `use(child, localName)` for each element in `parent`, in order.
template <typename Use> void eachChild(const XmlElement &parent, const Use &use) {
    if (parent.isNull()) return;
    const XmlTree &tree = *parent.tree_;
    const std::uint32_t end = tree.elements_[parent.index_].end;
    for (std::uint32_t child = parent.index_ + 1; child < end; child = tree.elements_[child].end)
        use(XmlElement(tree, child), tree.names_[tree.elements_[child].name]);
}

// The first element of this local name in `parent`, or a null element.
XmlElement childOf(const XmlElement &parent, QLatin1String name);

// The text of that element; empty without one.
QString childText(const XmlElement &parent, QLatin1String name);

} // namespace EDA
