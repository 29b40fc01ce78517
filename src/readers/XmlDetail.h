// XML documents: loading them, and looking at their elements by local names.
#pragma once

#include "readers/XmlLimits.h"

#include <QDomDocument>

#include <cstddef>
#include <string>

class QIODevice;

namespace EDA {

// Replaces the document by the one that the text holds, with its namespaces resolved. False when the text
// does not parse, goes beyond a limit, or grows by its entities far beyond what its bytes could say.
bool loadXml(const std::string &text, const XmlLimits &limits, QDomDocument &document);

// The local name of the first element of the XML document that the device, of `size` bytes, holds, with the
// same limits. What follows it is not looked at. Empty when there is none.
QString firstElement(QIODevice &device, std::size_t size, const XmlLimits &limits);

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
