// The model file: JSON, streamed both ways.
#pragma once

#include "host/EntityModel/Model.h"
#include "host/FileSystem/Limits.h"

#include <cstdint>
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

    // The same without a model: the root with all below it outside every model, as a library keeps it. The
    // entities have no ids. Unlike the end of a model, the end of such a tree leaves the undo steps alone.
    static std::unique_ptr<Entity> loadTree(const std::string &filename, std::string &error,
                                            std::uint64_t sizeLimit = FileSystem::maxFileSize);
    static std::unique_ptr<Entity> parseTree(std::string_view text, const std::string &name,
                                             std::string &error);

    // The text that save() writes.
    static std::string toText(const Model &model);
};

} // namespace EntityModel
