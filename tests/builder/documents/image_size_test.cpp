#include "builder/documents/image_size.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>

namespace Lumenfold::Builder {
namespace {

using namespace std::string_view_literals;

std::string size_text(std::string_view bytes) {
    const auto size = image_size(bytes);
    return size ? std::to_string(size->width) + "x" + std::to_string(size->height) : "none";
}

TEST(ImageSize, IsReadFromTheHeader) {
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\x02\x80\0\0\x01\xE0\x08"sv, "640x480"},
        {"GIF89a\x0A\0\x14\0"sv, "10x20"},
        {"\xFF\xD8\xFF\xE0\0\x04--\xFF\xC4\0\x02\xFF\xC2\0\x11\x08\0\x78\0\xA0\x03 "sv, "160x120"},
        {"RIFF\0\0\0\0WEBPVP8 \0\0\0\0\0\0\0\x9D\x01\x2A"
         "\x40\x01\xF0\0"sv,
         "320x240"},
        {"RIFF\0\0\0\0WEBPVP8L\0\0\0\0\x2F\x3F\xC1\x3B\0"sv, "320x240"},
        {"RIFF\0\0\0\0WEBPVP8X\0\0\0\0\x10\0\0\0\x3F\x01\0\xEF\0\0"sv, "320x240"},
        {"\0\0\0\x1C"
         "ftypavif....ispe\0\0\0\0\0\0\0\x10\0\0\0\x08...ispe\0\0\0\0\0\0\x01\0\0\0\0\x80"sv,
         "256x128"},
        {"<svg width=\"12.4\" height='30px'>"sv, "12x30"},
        {"\xEF\xBB\xBF<?xml version='1.0'?>\n<!-- <svg width='1'> --><!DOCTYPE svg>\n"
         "<svg\n viewBox='0 0 300,150' width=\"100%\" stroke-width='3'/>"sv,
         "300x150"},
        {"<svg viewBox='0 0 24 12' width='48'>"sv, "48x24"},
        {"<svg xmlns='x'>"sv, "0x0"},
        {"<svg width='1e999' height='nan' viewBox='0 0 -1 inf'>"sv, "0x0"},
        {"<svgs width='1'>"sv, "none"},
        {"<!DOCTYPE html><svg>"sv, "0x0"},
        {"<html><svg width='1' height='1'>"sv, "none"},
        {"version https://example/1\noid sha256:0\n"sv, "none"},
        {""sv, "none"},
        {"\x89PNG\r\n\x1A\n"sv, "0x0"},
        {"\xFF\xD8\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"sv, "0x0"},
        {"\xFF\xD8\xFF\xE0\0\0\xFF\xE0\0\0\xFF\xE0\0\0"sv, "0x0"},
    };
    for (const auto& [bytes, expected] : cases)
        EXPECT_EQ(size_text(bytes), expected) << bytes;
}

} // namespace
} // namespace Lumenfold::Builder
