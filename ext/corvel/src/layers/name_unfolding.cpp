#include "layers/name_unfolding.h"

#include <algorithm>
#include <utility>

namespace Layers {
namespace {

void append_word(std::string& text, std::string_view word) {
    if (word.empty())
        return;
    if (!text.empty())
        text += ' ';
    text += word;
}

// Whether the texts of a name might take more than `limit` bytes together.
bool takes_more(const NameNode& name, std::size_t limit) {
    std::size_t count = 1;
    std::size_t length = 0;
    for (const NamePart& part : name.parts) {
        std::size_t longest = 0;
        for (const std::string_view alternative : part.alternatives)
            longest = std::max(longest, alternative.size());
        count *= part.alternatives.size();
        length += longest + 1;
        if (count > limit || length > limit)
            return true;
    }
    return count * length > limit;
}

} // namespace

bool is_plain(const NameNode& name) {
    const auto is_word = [](const NamePart& part) {
        return part.alternatives.size() == 1 && !part.alternatives.front().empty();
    };
    return !name.empty() && std::all_of(name.parts.begin(), name.parts.end(), is_word);
}

std::string_view plain_text(const NameNode& name, std::string& buffer) {
    if (name.parts.size() == 1)
        return name.parts.front().alternatives.front();
    buffer.clear();
    for (const NamePart& part : name.parts)
        append_word(buffer, part.alternatives.front());
    return buffer;
}

bool stands_for_something(const NameNode& name) {
    for (const NamePart& part : name.parts)
        for (const std::string_view alternative : part.alternatives)
            if (!alternative.empty())
                return true;
    return false;
}

std::vector<std::string> unfold(const NameNode& name, std::size_t limit) {
    std::vector<std::string> texts;
    if (name.empty() || takes_more(name, limit))
        return texts;
    texts.emplace_back();
    for (const NamePart& part : name.parts) {
        std::vector<std::string> longer;
        for (const std::string& text : texts)
            for (const std::string_view alternative : part.alternatives)
                append_word(longer.emplace_back(text), alternative);
        texts = std::move(longer);
    }
    std::erase(texts, "");
    return texts;
}

} // namespace Layers
