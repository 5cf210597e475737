#pragma once

#include "site/json_file.h"
#include "support/file_size_limit.h"
#include "support/read_only.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <string>

namespace TestSupport {

namespace fs = std::filesystem;

/// What a rewrite that changes nothing makes of a JSON text.
inline std::string normal_form(const std::string& text) {
    const auto json = Lumenfold::parse_json(text);
    const auto normal = json ? Lumenfold::dump_config(*json) : std::nullopt;
    EXPECT_TRUE(normal) << "not a document: " << text.substr(0, 200);
    return normal.value_or("");
}

/// The words that the JSON library has for a faulty text.
inline std::string parser_words(const std::string& text) {
    try {
        return "no fault: " + nlohmann::ordered_json::parse(text).dump();
    } catch (const nlohmann::json::exception& problem) {
        return problem.what();
    }
}

} // namespace TestSupport
