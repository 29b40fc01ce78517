// The file of an IDX document.
#pragma once

#include <string>

class QDomDocument;

namespace EDA {

constexpr char const *idxRootTag = "foundation:EDMDDataSet";

// Writes the document, whose root element gets the namespaces of the format. False, with the file as it was,
// when it could not be written.
bool saveIdxDocument(QDomDocument const &document, std::string const &filename);

} // namespace EDA
