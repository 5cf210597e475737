#pragma once

#include "site/json_text.h"

#include <nlohmann/json.hpp>

#include <cstddef>
#include <filesystem>
#include <initializer_list>
#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace TestSupport {

/// The same choices for the same seed, with every library.
class Random {
public:
    explicit Random(unsigned seed)
        : engine_(seed) {}

    std::size_t below(std::size_t end) { return engine_() % end; }
    bool one_in(std::size_t chances) { return below(chances) == 0; }
    template <class T>
    T one_of(std::initializer_list<T> choices) {
        return choices.begin()[below(choices.size())];
    }
    template <class Choices>
    auto any_of(const Choices& choices) {
        return choices[below(choices.size())];
    }
    /// A text that never came before and is part of no other.
    std::string word() { return "w" + std::to_string(++words_) + "z"; }

private:
    std::mt19937 engine_;
    int words_ = 0;
};

/// The files at one time. A record is an object of a configuration; the key "uid", of which the
/// application knows nothing, tells records apart wherever they stand.
struct Look {
    struct Record {
        std::string file;
        std::string list;      ///< where it stands: the file and a JSON pointer
        Lumenfold::Json value; ///< without what is in it
    };
    bool all_parse = true;                                 ///< the configurations
    std::map<std::string, std::string> files;              ///< by path; folders end in "/"
    std::map<std::string, Record> records;                 ///< by uid
    std::map<std::string, std::vector<std::string>> lists; ///< uids by place
};

/// A site with projects, of which every text that a person sees is unique, and somebody else who
/// changes its files.
class Site {
public:
    /// Makes the files below `root`.
    Site(Random& random, std::filesystem::path root);

    std::vector<std::filesystem::path> to_open() const;
    Look look() const;

    /// Changes, breaks, removes or restores some file, half of the time the preferred one; says
    /// what.
    std::string disturb(const std::string& preferred);
    /// Gives records that the application made their uids.
    void claim_new_records();

    /// The uid of the record that is called so; empty if there is none.
    std::string owner_of(const std::string& name) const;
    /// The record of `place` gets the text under its key.
    void owns(const std::string& text, const std::pair<std::string, std::string>& place);
    /// What to type for a key: the word, or one of a few paths.
    std::string value_for(const std::string& key, const std::string& word);
    /// A configuration's text with the word in it.
    static std::string with_title(const std::string& text, const std::string& word);

    static bool is_configuration(const std::string& file);
    /// Whether the application may have a file there, of a path relative to the root.
    static bool is_in_its_place(const std::string& file);

private:
    using Json = Lumenfold::Json;

    std::filesystem::path at(const std::string& file) const { return root_ / file; }
    void make_project(const std::string& slug);
    Json make_record(std::initializer_list<const char*> named,
                     std::initializer_list<std::pair<const char*, std::string>> others = {});
    std::vector<std::string> files(bool configurations) const;
    void save_earlier(const std::string& file);
    void put(const std::string& file, const std::string& text);
    void put(const std::string& file, const Json& json);
    std::string restore();
    void add_twin(Json& list, std::size_t at);
    std::string disturb_list(const std::string& file, Json& json);
    void claim(Json& value, const std::string& uid);
    void claim_children(Json& value, const std::string& uid);

    Random& random_;
    std::filesystem::path root_;
    std::map<std::string, std::string> owners_;               ///< uid by name
    std::map<std::string, std::vector<std::string>> earlier_; ///< contents, by file
};

} // namespace TestSupport
