// Looking at files before they are read.
#pragma once

#include <string>
#include <vector>

namespace EDATool {

// The first bytes of a file, up to 64 KiB, without byte order mark and NUL bytes, so that text looks alike in
// every encoding. Throws DesignFailure with the file's name and the reason when it is missing, a folder, a
// device, empty, too large or cannot be opened.
std::string readHead(const std::string &file);

bool isFolder(const std::string &name);

// The paths of the files in a folder, by name; without folders in it and names that start with a dot.
std::vector<std::string> filesInFolder(const std::string &folder);
// The same of the folders in it.
std::vector<std::string> foldersInFolder(const std::string &folder);

// True when both names lead to the same existing file.
bool isSameFile(const std::string &a, const std::string &b);

// The extension with its dot, in lower case: ".emn".
std::string lowerExtension(const std::string &file);

// The file of this name in its folder, without regard to case where none matches exactly; empty when there is
// none.
std::string findIgnoringCase(const std::string &file);

// Throws DesignFailure with the file's name and an error text of AtomicFile or FFofstream.
[[noreturn]] void failToWrite(const std::string &file, const std::string &error);

// Throws DesignFailure when the file cannot be written, before long work is done for it.
void checkWritable(const std::string &file);

// Writes a whole output file, or throws DesignFailure and leaves what was there.
void writeWhole(const std::string &file, const std::string &bytes);

} // namespace EDATool
