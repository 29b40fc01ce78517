// Where a model keeps the files that its attributes refer to.
#pragma once

#include <string>

namespace EntityGUI {

struct ReferencedFilesManager {
    // The folder, within that of the model, for the files of the attributes of this label: one folder a
    // label. Who puts a file there makes the folder.
    //
    // It is the label itself, so that a user finds his way. Any byte that is no letter, digit, blank, minus
    // or underscore of ASCII, and a blank at either end, stands as "%" and two hexadecimal digits; an empty
    // label is "%". The result is always one folder name and never leads elsewhere.
    static std::string getAttributeFolder(const std::string &label);
};

} // namespace EntityGUI
