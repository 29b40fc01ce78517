// Attributes of files, apertures and objects.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace EDA::Fabrication {

struct Attribute {
    std::string name;
    std::vector<std::string> values;
};

// "name,value,value", with \u0020 and the like resolved. Always valid UTF-8.
Attribute parseAttribute(std::string_view text);

// The attributes that are set at one place of a file.
class AttributeDictionary {
public:
    // What follows "TF", "TA", "TO" and "TD" in their statements.
    void setFile(std::string_view text);
    void setAperture(std::string_view text);
    void setObject(std::string_view text);
    // Without a name all of apertures and objects; those of the file stay.
    void remove(std::string_view text);

    std::map<std::string, std::vector<std::string>> const &file() const { return file_; }
    // The aperture function, or an empty text.
    std::string apertureFunction() const;
    // The net and the pin ("U1,3"); empty where there is none or it is marked as not connected.
    std::string net() const;
    std::string pin() const;

private:
    using Values = std::map<std::string, std::vector<std::string>>;

    Values file_;
    Values aperture_;
    Values object_;
};

} // namespace EDA::Fabrication
