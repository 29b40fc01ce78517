// Building trees of XML elements, and looking at their parts.
#include "readers/XmlTree.h"

#include <limits>

namespace EDA {

namespace {

// A little less than the toolkit's texts can hold, so that any range becomes one.
constexpr std::size_t longestText = std::numeric_limits<int>::max() / 2 - 1024;

bool append(std::vector<QChar> &buffer, const QString &text) {
    if (static_cast<std::size_t>(text.size()) > longestText - buffer.size()) return false;
    buffer.insert(buffer.end(), text.begin(), text.end());
    return true;
}

std::uint32_t sizeOf(const std::vector<QChar> &buffer) { return static_cast<std::uint32_t>(buffer.size()); }

QString rangeOf(const std::vector<QChar> &buffer, std::uint32_t begin, std::uint32_t end) {
    return begin == end ? QString() : QString(&buffer[begin], static_cast<int>(end - begin));
}

} // namespace

const QString &XmlElement::localName() const {
    static const QString none;
    return isNull() ? none : tree_->names_[tree_->elements_[index_].name];
}

QString XmlElement::text() const {
    if (isNull()) return QString();
    const XmlTree::Element &element = tree_->elements_[index_];
    return rangeOf(tree_->text_, element.text, element.textEnd);
}

QString XmlElement::attribute(QLatin1String name) const {
    const XmlTree::Attribute *found = isNull() ? nullptr : tree_->findAttribute(index_, name);
    if (!found) return QString();
    const bool isFirst = found == tree_->attributes_.data();
    return rangeOf(tree_->values_, isFirst ? 0 : found[-1].valueEnd, found->valueEnd);
}

bool XmlElement::hasAttribute(QLatin1String name) const {
    return !isNull() && tree_->findAttribute(index_, name);
}

bool XmlTree::beginElement(const QString &localName) {
    std::uint32_t name = 0;
    const bool isSecondRoot = open_.empty() && !elements_.empty();
    if (isSecondRoot || localName.isEmpty() || !hasRoom() || !takeName(localName, name)) return false;
    const std::uint32_t index = static_cast<std::uint32_t>(elements_.size());
    const std::uint32_t text = sizeOf(text_);
    elements_.push_back({name, index + 1, static_cast<std::uint32_t>(attributes_.size()), text, text});
    open_.push_back(index);
    return true;
}

bool XmlTree::addAttribute(const QString &localName, const QString &value) {
    std::uint32_t name = 0;
    if (open_.empty() || !hasRoom() || !takeName(localName, name) || !append(values_, value)) return false;
    attributes_.push_back({name, sizeOf(values_)});
    return true;
}

bool XmlTree::addText(const QString &text) { return !open_.empty() && append(text_, text); }

bool XmlTree::endElement() {
    if (open_.empty()) return false;
    Element &element = elements_[open_.back()];
    element.end = static_cast<std::uint32_t>(elements_.size());
    element.textEnd = sizeOf(text_);
    open_.pop_back();
    return true;
}

bool XmlTree::takeName(const QString &name, std::uint32_t &index) {
    const auto known = indexes_.find(name);
    if (known == indexes_.end() && names_.size() >= limits_.names) return false;
    index = known == indexes_.end() ? static_cast<std::uint32_t>(names_.size()) : known->second;
    if (known != indexes_.end()) return true;
    indexes_.emplace(name, index);
    names_.push_back(name);
    return true;
}

const XmlTree::Attribute *XmlTree::findAttribute(std::uint32_t element, QLatin1String name) const {
    const std::size_t begin = elements_[element].attributes;
    const std::size_t next = element + std::size_t{1};
    std::size_t at = next < elements_.size() ? elements_[next].attributes : attributes_.size();
    while (at > begin)
        if (names_[attributes_[--at].name] == name) return &attributes_[at];
    return nullptr;
}

XmlElement childOf(const XmlElement &parent, QLatin1String name) {
    XmlElement found;
    eachChild(parent, [&](const XmlElement &child, const QString &tag) {
        if (found.isNull() && tag == name) found = child;
    });
    return found;
}

QString childText(const XmlElement &parent, QLatin1String name) { return childOf(parent, name).text(); }

} // namespace EDA
