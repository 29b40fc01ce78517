// Between the UTF-8 names of the interface and the paths of the standard library.
#pragma once

#include <cstdio>
#include <filesystem>
#include <string>
#include <system_error>

namespace FileSystem {

// A name that is no valid UTF-8 gives an empty path where the system's own paths aren't bytes.
std::filesystem::path toNative(const std::string &path);

std::string fromNative(const std::filesystem::path &path);

// "name: reason", the form of every error text of this folder.
std::string fileError(const std::string &path, const std::string &reason);
std::string fileError(const std::string &path, const std::error_code &reason);

// The reason of a failed C library call just made.
std::error_code lastError();

// fopen with a UTF-8 name. The mode is one of the C library's; null on failure, with the reason in lastError.
std::FILE *openFile(const std::filesystem::path &path, const char *mode);

} // namespace FileSystem
