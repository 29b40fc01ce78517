// Reading what the tool prints with --json.
#pragma once

#include "support/RunTool.h"

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include <string>
#include <vector>

namespace TestSupport {

inline rapidjson::Document parseJson(const std::string &text) {
    rapidjson::Document document;
    document.Parse(text.c_str());
    EXPECT_FALSE(document.HasParseError()) << text;
    return document;
}

// How many placements the member "parts" of a report says were imported as a type.
inline int importedAs(const rapidjson::Value &parts, const char *type) {
    const rapidjson::Value &types = parts["imported"];
    return types.HasMember(type) ? types[type].GetInt() : 0;
}

// The texts of an array.
inline std::vector<std::string> textsOf(const rapidjson::Value &array) {
    std::vector<std::string> texts;
    for (const rapidjson::Value &text : array.GetArray())
        texts.emplace_back(text.GetString());
    return texts;
}

} // namespace TestSupport
