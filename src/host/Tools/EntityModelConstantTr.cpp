// The translation hook.
#include "host/Tools/EntityModelConstantTr.h"

#include <utility>

namespace EntityModel {

namespace {

EntityModelConstantTr::Translator &installedTranslator() {
    static EntityModelConstantTr::Translator translator;
    return translator;
}

} // namespace

QString EntityModelConstantTr::tr(const char *text, const char *note, int number) {
    if (text == nullptr) return {};
    if (installedTranslator()) return installedTranslator()(text, note, number);
    QString english = QString::fromUtf8(text);
    if (number >= 0) english.replace(QStringLiteral("%n"), QString::number(number));
    return english;
}

void EntityModelConstantTr::setTranslator(Translator translator) {
    installedTranslator() = std::move(translator);
}

} // namespace EntityModel
