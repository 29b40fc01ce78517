// The model file: JSON, streamed both ways.
#pragma once

#include "host/EntityModel/Model.h"

#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>

namespace EntityModel {

namespace ModelFileLimits {
constexpr int depth = 256; // of nested JSON objects and arrays
}

class ModelFile {
public:
    // Writes the model to `filename`, through a temporary file that replaces it only when whole. False with
    // `error` naming the file and the reason; then the old file is as it was.
    static bool save(const Model &model, const std::string &filename, std::string &error);

    // The model of a file, or null with `error` naming the file, the line and what is wrong.
    static std::unique_ptr<Model> load(const std::string &filename, std::string &error);

    // The same from text in memory; `name` stands for the file in messages.
    static std::unique_ptr<Model> parse(std::string_view text, const std::string &name, std::string &error);

    // The text that save() writes.
    static std::string toText(const Model &model);
};

} // namespace EntityModel
