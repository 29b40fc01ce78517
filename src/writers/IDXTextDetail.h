// Texts and numbers of an IDX document.
#pragma once

#include <QString>

#include <string>

namespace EDA {

// UTF-8 as text that an XML document can hold: other characters are dropped.
QString idxText(std::string const &text);

// A length or a thickness; one that is not finite as 0.
QString idxNumber(double value);

// A part of a turn, in six digits.
QString idxShortNumber(double value);

} // namespace EDA
