// Which file names belong to which kind of file, as text for a file dialog.
#pragma once

#include <set>
#include <string>
#include <vector>

namespace FileSystem {

class FileFormats {
public:
    // Adds a kind of file: what it is called and the patterns of its names ("*.emn"), in order. A second
    // call with the same description adds to its patterns; a pattern that is there already is not repeated.
    void addFormats(const std::string &description, const std::vector<std::string> &patterns);

    // The filter text: "Board Files (*.emn *.brd)", several kinds joined by ";;".
    //   withPatterns  false: the descriptions alone
    //   leaveOut      patterns that are not offered; a kind that has none left is left out
    std::string getFormats(bool withPatterns, const std::set<std::string> &leaveOut) const;

    // Adds every pattern of every kind.
    void getAllFormats(std::set<std::string> &patterns) const;

private:
    struct Kind {
        std::string description;
        std::vector<std::string> patterns;
    };
    std::vector<Kind> kinds_;
};

} // namespace FileSystem
