// XML documents: loading them, and looking at their elements by local names.
#pragma once

#include <QDomDocument>

#include <string>

namespace EDA {

// Replaces the document by the one that the text holds, with its namespaces resolved. False when the text
// does not parse, or has more than `maxDepth` levels of elements.
bool loadXml(const std::string &text, int maxDepth, QDomDocument &document);

// Calls `use(child, localName)` for each element in `parent`, in order.
template <typename Use> void eachChild(const QDomElement &parent, const Use &use) {
    for (QDomNode node = parent.firstChild(); !node.isNull(); node = node.nextSibling()) {
        const QDomElement child = node.toElement();
        if (!child.isNull()) use(child, child.localName());
    }
}

// The first element of this local name in `parent`, or a null element.
QDomElement childOf(const QDomElement &parent, QLatin1String name);

// The text of that element; empty without one.
QString childText(const QDomElement &parent, QLatin1String name);

} // namespace EDA
