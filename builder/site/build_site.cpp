#include "builder/site/build_site.h"

#include "builder/output/output_folder.h"
#include "builder/pages/search_index.h"
#include "builder/pages/site_assets.h"
#include "builder/report/interruption.h"
#include "builder/report/known_messages.h"
#include "builder/report/program_folder.h"
#include "builder/site/machine_files.h"
#include "builder/site/parallel.h"
#include "builder/site/project_pages.h"
#include "builder/site/sign.h"
#include "builder/site/site_files.h"
#include "builder/site/site_note.h"
#include "builder/site/site_pages.h"
#include "builder/site/theme_choice.h"
#include "builder/versions/build_versions.h"
#include "builder/versions/building_folder.h"
#include "site/config_files.h"
#include "site/json_file.h"
#include "site/path_text.h"

#include <algorithm>
#include <chrono>
#include <mutex>
#include <set>
#include <utility>

namespace Lumenfold::Builder {

namespace fs = std::filesystem;

namespace {

constexpr const char* SITE_UNIT = "site"; // the site's own pages, and the note
constexpr const char* FILES_UNIT = "files";
constexpr const char* SEARCH_UNIT = "search";

std::string counted(std::size_t count, const char* one, const char* many) {
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

std::string joined(const std::vector<std::string>& texts) {
    std::string all;
    for (const std::string& text : texts)
        all += (all.empty() ? "" : ", ") + text;
    return all;
}

/// One build of a site, step by step.
class SiteBuild {
public:
    SiteBuild(SiteModel site, const SiteBuildOptions& options, Reporter& reporter)
        : site_(std::move(site))
        , options_(options)
        , reporter_(reporter)
        , addresses_(site_.config.folder, site_.config.url)
        , context_{site_, addresses_, states_} {}

    bool build() {
        if (!options_.check_only && !open_output())
            return false;
        bool sound = site_.complete;
        if (options_.pending)
            sound = build_pending() && sound;
        read_projects();
        if (is_interrupted())
            return false;
        if (!options_.check_only && nothing_changed()) {
            watch(old_note_.files);
            return finish(old_note_.messages, old_note_.pages) && sound;
        }
        resolve();
        if (is_interrupted())
            return false;
        watch(files_to_watch());
        if (options_.check_only) {
            reporter_.say(messages_);
            return sound;
        }
        return write_site() && sound;
    }

private:
    bool open_output() {
        std::string problem;
        fs::path folder = options_.output;
        if (folder.empty())
            folder = site_.config.folder /
                     path_from_utf8(site_.config.output.empty() ? "output" : site_.config.output);
        output_ = OutputFolder::open(fs::absolute(folder).lexically_normal(), site_.config.folder,
                                     problem);
        if (!output_) {
            reporter_.fault({}, problem);
            return false;
        }
        reporter_.output_folder(path_to_utf8(output_->folder()));
        if (options_.built_folder != nullptr)
            *options_.built_folder = output_->folder();
        if (const auto bytes = output_->note(SITE_UNIT))
            old_note_ = read_site_note(*bytes).value_or(SiteNote());
        return true;
    }

    /// Builds the versions that wait. What the projects' repositories have to say is told with the
    /// site, also when nothing waits.
    bool build_pending() {
        const std::size_t count = site_.projects.size();
        std::vector<Messages> told(count);
        std::vector<char> built(count, 0);
        std::vector<char> sound(count, 1);
        std::size_t said = 0;
        std::mutex saying;
        for_each_index(count, options_.threads, [&](std::size_t i) {
            const ProjectConfig& config = site_.projects[i].config;
            if (!source_folder(config).empty() && !is_interrupted())
                sound[i] = static_cast<char>(build_versions(
                    config.file.path, list_versions(config.file.path), "", [&](Message message) {
                        message.file =
                            shown_path(path_from_utf8(message.file), site_.config.folder);
                        told[i].push_back(std::move(message));
                    }));
            const std::lock_guard guard(saying);
            built[i] = 1;
            for (; said < count && built[said]; ++said) {
                reporter_.say(told[said]);
                for (const Message& message : told[said])
                    known_.add(message);
            }
            reporter_.progress("projects built", said, count);
        });
        return std::find(sound.begin(), sound.end(), 0) == sound.end();
    }

    void read_projects() {
        states_.resize(site_.projects.size());
        for_each_index(site_.projects.size(), options_.threads, [&](std::size_t i) {
            std::optional<ProjectNote> note;
            if (output_)
                if (const auto bytes = output_->note(unit_of(site_.projects[i])))
                    note = read_note(*bytes);
            if (!options_.check_only)
                repair_versions(site_.projects[i].config.folder);
            states_[i] = project_state(site_, site_.projects[i], std::move(note));
            if (options_.check_only)
                check_waiting_versions(site_, site_.projects[i], states_[i].note);
        });
    }

    bool nothing_changed() {
        inputs_ = site_sign(site_, states_, old_note_.files);
        if (old_note_.inputs != inputs_ || !output_->is_current(SITE_UNIT, inputs_) ||
            !output_->is_intact(FILES_UNIT) || !output_->is_intact(SEARCH_UNIT))
            return false;
        for (std::size_t i = 0; i < states_.size(); ++i)
            if (!states_[i].noted || !output_->is_intact(unit_of(site_.projects[i])))
                return false;
        for (const char* unit : {SITE_UNIT, FILES_UNIT, SEARCH_UNIT})
            output_->keep(unit);
        for (const SiteProject& project : site_.projects)
            output_->keep(unit_of(project));
        return true;
    }

    /// Everything that can be wrong is found here, before the first file is written.
    void resolve() {
        for (const SitePage& page : site_page_list(site_.config)) {
            addresses_.add_page(page.path, page.title, nullptr);
            ++pages_;
        }
        for (const ProjectState& state : states_)
            for (const NotedPage& page : state.note.pages) {
                addresses_.add_page(page.path, page.title, &page.anchors);
                ++pages_;
            }
        documents_ = read_site_documents(context_, messages_);
        chrome_ = make_chrome(site_view(context_, messages_));
        for (std::size_t i = 0; i < states_.size(); ++i) {
            tell_new(states_[i].note.repository_messages);
            tell_waiting(i);
            tell_new(states_[i].note.messages);
            views_.push_back(project_view(context_, i, messages_));
            check_site_links(states_[i].note);
        }
    }

    /// Tells what was not told already: building the pending versions tells much of it, and the tag
    /// that waits is often what lies in the work tree.
    void tell_new(const Messages& messages) {
        for (const Message& message : messages)
            if (known_.add(message))
                messages_.push_back(message);
    }

    void tell_waiting(std::size_t i) {
        const std::vector<std::string>& waiting = states_[i].note.waiting;
        if (waiting.empty())
            return;
        messages_.push_back({Severity::Info, site_.projects[i].config.file.name, 0,
                             counted(waiting.size(), "version waits", "versions wait") +
                                 " to be built: " + joined(waiting) + "."});
    }

    void check_site_links(const ProjectNote& note) {
        for (const SiteLink& link : note.site_links) {
            SiteTarget target = addresses_.resolve(link.address);
            if (!target.problem.empty())
                messages_.push_back(
                    {Severity::Complaint, link.file, link.line, std::move(target.problem)});
        }
    }

    bool write_site() {
        const SiteThemes themes = choose_themes(site_.config, themes_folder(), messages_);
        const SiteConfig& config = site_.config;
        assets_ =
            site_assets(themes.theme, themes.other,
                        {config.accent, config.logo_height, config.logo_height_mobile}, messages_);
        for (SiteAsset& file : machine_files(context_))
            assets_.push_back(std::move(file));
        files_ = site_files(config, addresses_);
        const std::vector<std::string> wanted = files_to_watch();
        inputs_ = site_sign(site_, states_, wanted);
        claim_all();
        std::string problem;
        if (!output_->begin(problem)) {
            reporter_.fault({}, problem);
            return false;
        }
        write_all();
        output_->set_note(SITE_UNIT, write_site_note({inputs_, wanted, messages_, pages_}));
        return finish(messages_, pages_);
    }

    std::vector<std::string> files_to_watch() const {
        const std::set<std::string> wanted = addresses_.wanted_files();
        std::vector<std::string> files(wanted.begin(), wanted.end());
        for (const ConfigPolicy& policy : site_.config.policies)
            files.push_back(policy.file);
        for (const ConfigSection& section : site_.config.sections)
            files.push_back(section.body);
        for (std::string& file : files)
            file.erase(0, file.find_first_not_of('/'));
        for (std::string& file : optional_files())
            files.push_back(std::move(file));
        return files;
    }

    void watch(const std::vector<std::string>& files) const {
        if (options_.watched == nullptr)
            return;
        WatchList& list = *options_.watched;
        list = {{site_.config.file.path}, {}};
        for (const std::string& file : files)
            list.files.push_back(site_.config.folder / path_from_utf8(file));
        for (const std::string& reference : site_.config.projects)
            list.files.push_back(project_file(reference, site_.config.folder));
        for (std::size_t i = 0; i < states_.size(); ++i) {
            const ProjectConfig& config = site_.projects[i].config;
            const fs::path source = source_folder(config);
            if (!source.empty())
                list.sources.push_back(source);
            for (const auto& [path, identity] : states_[i].note.looked_at)
                list.files.push_back(source / path_from_utf8(path));
            for (const ConfigVersion& version : config.versions)
                list.files.push_back(config.folder / "versions" / path_from_utf8(version.label) /
                                     BUILT_FILE_NAME);
        }
    }

    /// What is kept is settled before the first claim, so that nothing kept can be claimed.
    void claim_all() {
        site_search_ = search_summary(site_search_pages(context_, documents_));
        const std::string search = search_sign();
        const bool same_search = output_->is_current(SEARCH_UNIT, search);
        if (same_search)
            output_->keep(SEARCH_UNIT);
        const std::vector<std::string> signs = keep_projects();
        claim(SITE_UNIT, inputs_, assets_, site_page_list(site_.config));
        claim(FILES_UNIT, inputs_, files_);
        if (!same_search)
            claim(SEARCH_UNIT, search, make_search());
        for (const std::size_t i : stale_)
            output_->claim(unit_of(site_.projects[i]), signs[i], project_paths(context_, i),
                           messages_);
    }

    template <typename... Lists>
    void claim(const char* unit, const std::string& sign, const Lists&... lists) {
        std::vector<std::string> paths;
        const auto add = [&](const auto& list) {
            for (const auto& element : list)
                paths.push_back(element.path);
        };
        (add(lists), ...);
        output_->claim(unit, sign, paths, messages_);
    }

    /// The projects' signs; those whose pages are made anew are in `stale_`.
    std::vector<std::string> keep_projects() {
        const std::string chrome_sign = Sign()
                                            .add_file(program_file())
                                            .add(chrome_.head)
                                            .add(chrome_.header)
                                            .add(chrome_.footer)
                                            .hex();
        std::vector<std::string> signs;
        for (std::size_t i = 0; i < states_.size(); ++i) {
            const std::string unit = unit_of(site_.projects[i]);
            signs.push_back(project_sign(context_, i, chrome_sign));
            if (states_[i].noted && output_->is_current(unit, signs.back()))
                output_->keep(unit);
            else
                stale_.push_back(i);
        }
        return signs;
    }

    SearchWeights search_weights() const {
        const SiteConfig& config = site_.config;
        return {config.title_weight, config.heading_weight, config.body_weight};
    }

    std::string search_sign() const {
        const SearchWeights weights = search_weights();
        Sign sign;
        sign.add_file(program_file()).add(site_.config.search ? "on" : "off");
        for (const double weight : {weights.title, weights.heading, weights.body})
            sign.add(std::to_string(weight));
        for (const ProjectState& state : states_)
            sign.add(state.note.search);
        return sign.add(site_search_).hex();
    }

    const std::vector<SiteAsset>& make_search() {
        std::vector<std::string> summaries;
        for (const ProjectState& state : states_)
            summaries.push_back(state.note.search);
        summaries.push_back(site_search_);
        if (site_.config.search)
            search_ = search_files(summaries, search_weights());
        return search_;
    }

    void write_all() {
        const auto writer = [this](std::string unit) -> FileWriter {
            return [this, unit = std::move(unit)](std::string_view path, std::string_view bytes) {
                output_->write(unit, path, bytes);
            };
        };
        make_site_pages(context_, chrome_, documents_, writer(SITE_UNIT));
        for (const SiteAsset& asset : assets_)
            output_->write(SITE_UNIT, asset.path, asset.bytes);
        for (const SiteAsset& asset : search_)
            output_->write(SEARCH_UNIT, asset.path, asset.bytes);
        for (const SiteFile& file : files_)
            if (const std::optional<std::string> bytes = read_text_file(file.source))
                output_->write(FILES_UNIT, file.path, *bytes);
        for_each_index(stale_.size(), options_.threads, [&](std::size_t at) {
            const std::size_t i = stale_[at];
            make_project_pages(context_, chrome_, i, views_[i], writer(unit_of(site_.projects[i])));
        });
        for (std::size_t i = 0; i < states_.size(); ++i)
            if (states_[i].renoted)
                output_->set_note(unit_of(site_.projects[i]), write_note(states_[i].note));
    }

    bool finish(const Messages& messages, std::size_t pages) {
        OutputCounts counts;
        std::string problem;
        const bool finished = output_->finish(counts, problem);
        reporter_.say(messages);
        if (!finished) {
            reporter_.fault({}, problem);
            return false;
        }
        const auto spent = std::chrono::duration_cast<std::chrono::milliseconds>(
            std::chrono::steady_clock::now() - start_);
        reporter_.info(counted(pages, "page", "pages") + " of " +
                       counted(site_.projects.size(), "project", "projects") + ": " +
                       counted(counts.written, "file", "files") + " written, " +
                       std::to_string(counts.kept) + " kept, " + std::to_string(counts.removed) +
                       " removed, in " + std::to_string(spent.count()) + " ms");
        return true;
    }

    SiteModel site_;
    const SiteBuildOptions& options_;
    Reporter& reporter_;
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();

    std::optional<OutputFolder> output_;
    SiteNote old_note_;
    std::string inputs_;

    std::vector<ProjectState> states_;
    SiteAddresses addresses_;
    SiteContext context_;
    KnownMessages known_;
    Messages messages_;
    std::size_t pages_ = 0;

    SiteDocuments documents_;
    Chrome chrome_;
    std::vector<ProjectView> views_; ///< one for each project
    std::vector<SiteAsset> assets_;
    std::string site_search_; ///< search_summary of the site's own pages
    std::vector<SiteAsset> search_;
    std::vector<SiteFile> files_;
    std::vector<std::size_t> stale_; ///< projects whose pages are made anew
};

} // namespace

bool build_site(const fs::path& site_file, const SiteBuildOptions& options, Reporter& reporter) {
    Messages messages;
    std::optional<SiteModel> site = load_site(site_file, options.threads, messages);
    reporter.say(messages);
    return site && SiteBuild(*std::move(site), options, reporter).build();
}

} // namespace Lumenfold::Builder
