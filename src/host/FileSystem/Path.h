// Taking file names apart. Works on the text alone and never looks at the disk.
#pragma once

#include <string>
#include <vector>

namespace FileSystem {

// Names are UTF-8. Both '/' and '\' separate tokens, on every system, since designs carry names from both.
//
// The extension is the text from the last '.' of the last token on. A dot that begins the token makes a
// hidden name, not an extension, and so do the names "." and "..".
struct Path {
    // "a/b/c.emn" gives "c.emn". Separators at the end are passed over: "a/b/" gives "b".
    static std::string getLastToken(const std::string &path);

    // What stands before the last token, without the separator: "a/b/c.emn" gives "a/b", "c.emn" gives "".
    // The root stays: "/c.emn" gives "/", "C:\c.emn" gives "C:\".
    static std::string stripLastToken(const std::string &path);

    // The tokens between separators; empty ones are left out.
    static std::vector<std::string> getTokens(const std::string &path);

    // "a/b.Emn" gives ".Emn" with the dot and "Emn" without. No extension gives "". Upper and lower case are
    // kept: who compares decides whether case counts.
    static std::string getExtension(const std::string &path, bool withDot);

    // The extension without its dot, in lower case if asked for: the name of a file's format.
    static std::string getFormatExtension(const std::string &path, bool lowerCase);

    // The name without its extension and dot: path == stripExtension(path) + getExtension(path, true).
    static std::string stripExtension(const std::string &path);
};

} // namespace FileSystem
