// Texts that a user sees, in the user's language.
#pragma once

#include <functional>

#include <QString>

namespace EntityModel {

struct EntityModelConstantTr {
    // Gives the translation of an English text, with an optional note that tells equal texts apart, and a
    // number for plural forms (-1: none).
    using Translator = std::function<QString(const char *text, const char *note, int number)>;

    // The translated text. Without a translator it is the English text, in which "%n" is replaced by the
    // number when that is not negative. A null text gives an empty one.
    static QString tr(const char *text, const char *note = nullptr, int number = -1);

    // Installs the translator of the process; an empty one brings back the English texts. To be called by
    // the program before any work starts, as it is not guarded against other threads.
    static void setTranslator(Translator translator);
};

} // namespace EntityModel
