#pragma once

#include "site/json_text.h"

#include <nlohmann/json.hpp>

#include <unordered_map>
#include <utility>
#include <vector>

namespace Lumenfold {

/// Receives the parser's events and makes a document of them in linear time. The library's own way
/// looks through all members of an object for each key, and copies their values as it grows.
/// Implements nlohmann::json_sax without its virtual calls.
class JsonBuilder {
public:
    Json take_document() { return std::move(document_); }

    /// The parser's words, and the position (1-based) at which it gave up.
    const std::string& error() const { return error_; }
    std::size_t error_byte() const { return error_byte_; }

    bool null() { return add(nullptr); }
    bool boolean(bool value) { return add(value); }
    bool number_integer(Json::number_integer_t value) { return add(value); }
    bool number_unsigned(Json::number_unsigned_t value) { return add(value); }
    bool number_float(Json::number_float_t value, const std::string&) { return add(value); }
    bool string(std::string& value) { return add(std::move(value)); }
    bool binary(Json::binary_t&) { return false; }

    bool start_object(std::size_t) { return open(Json::value_t::object); }
    bool key(std::string& name);
    bool end_object();
    bool start_array(std::size_t) { return open(Json::value_t::array); }
    bool end_array();

    bool parse_error(std::size_t byte, const std::string& token, const Json::exception& problem);

private:
    /// An object or a list that is being read.
    struct Level {
        Json::value_t type;
        Json::array_t elements;
        std::vector<std::pair<std::string, Json>> members;
        std::size_t member = 0; ///< that the next value belongs to
        /// Where the members stand; filled once looking through them would take long.
        std::unordered_map<std::string, std::size_t> places;
    };

    bool open(Json::value_t type);
    bool add(Json value);

    Json document_;
    std::vector<Level> levels_;
    std::string error_;
    std::size_t error_byte_ = 0;
};

} // namespace Lumenfold
