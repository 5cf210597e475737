#include "app/editing/text_keeper.h"

#include "app/context/app_context.h"
#include "app/editing/editor_text.h"
#include "app/editing/kept_texts.h"
#include "runtime/corvel_app.h"

#include <utility>

namespace Lumenfold {

namespace {

constexpr int KEEP_DELAY_MS = 2000;

void show_buttons(const AppContext& context, const TextKeeper& keeper) {
    for (const std::string& button : {keeper.restore_path, keeper.discard_path})
        context.app.set_visible(button, keeper.offered.has_value());
}

/// There is nothing to offer any more.
void withdraw_offer(const AppContext& context, TextKeeper& keeper) {
    keeper.offered.reset();
    show_buttons(context, keeper);
}

/// Takes the offered text. Unsaved text that was on screen is offered in its place.
void restore(const Context& context, TextKeeper& keeper) {
    if (!keeper.offered)
        return;
    const KeptText kept = *keeper.offered;
    keep_now(*context, keeper);
    if (is_unsaved(*context, keeper))
        keeper.offered = find_kept_text(kept_folder(*context), keeper.file);
    else
        keeper.offered.reset();
    fill_editor(context->app, keeper.editor_path, kept.text);
    keeper.begun_on = kept.begun_on;
    show_buttons(*context, keeper);
    keep_later(context, keeper);
}

/// Whether the text kept last is the one that is offered, not the one on screen.
bool offers_last(const AppContext& context, const TextKeeper& keeper) {
    const auto last = find_kept_text(kept_folder(context), keeper.file);
    return keeper.offered && last && last->text == keeper.offered->text;
}

/// Drops what is kept of the text on screen.
void drop_typed(const AppContext& context, const TextKeeper& keeper) {
    if (!offers_last(context, keeper))
        drop_kept_text(kept_folder(context), keeper.file);
}

/// Offers what was kept of a file before. What it holds by now need not be kept.
void offer_kept(const AppContext& context, TextKeeper& keeper) {
    const std::string folder = kept_folder(context);
    keeper.offered.reset();
    if (!keeper.file.empty())
        keeper.offered = find_kept_text(folder, keeper.file);
    while (keeper.offered && keeper.offered->text == keeper.baseline) {
        drop_kept_text(folder, keeper.file);
        keeper.offered = find_kept_text(folder, keeper.file);
    }
    show_buttons(context, keeper);
}

void give_up(const Context& context, TextKeeper& keeper) {
    if (keeper.offered)
        drop_kept_text(kept_folder(*context), keeper.file, keeper.offered->text);
    if (is_unsaved(*context, keeper))
        withdraw_offer(*context, keeper);
    else
        offer_kept(*context, keeper);
}

} // namespace

void wire_text_keeper(const Context& context, TextKeeper& keeper, const std::string& status_bar,
                      const std::string& editor_path, const std::function<void()>& changed) {
    keeper.editor_path = editor_path;
    keeper.restore_path = status_bar + "/Restore Button";
    keeper.discard_path = status_bar + "/Discard Button";
    show_buttons(*context, keeper);
    context->app.on_click(keeper.restore_path, [context, &keeper, changed] {
        restore(context, keeper);
        changed();
    });
    context->app.on_click(keeper.discard_path, [context, &keeper, changed] {
        give_up(context, keeper);
        changed();
    });
}

void start_keeping(const AppContext& context, TextKeeper& keeper, const std::string& file,
                   const std::string& baseline) {
    ++keeper.generation;
    keeper.file = file;
    keeper.baseline = baseline;
    keeper.begun_on = baseline;
    offer_kept(context, keeper);
}

void go_on_keeping(const AppContext& context, TextKeeper& keeper, const std::string& begun_on) {
    keeper.begun_on = begun_on;
    withdraw_offer(context, keeper);
    keep_now(context, keeper);
}

bool is_unsaved(const AppContext& context, const TextKeeper& keeper) {
    return !keeper.file.empty() && context.app.input_value(keeper.editor_path) != keeper.baseline;
}

bool changed_beneath(const TextKeeper& keeper) {
    return keeper.begun_on != keeper.baseline;
}

void keep_later(const Context& context, TextKeeper& keeper) {
    const std::uint32_t generation = ++keeper.generation;
    if (!context->app.run_after)
        return;
    context->app.run_after(KEEP_DELAY_MS, [context, &keeper, generation] {
        if (generation != keeper.generation)
            return;
        if (!is_unsaved(*context, keeper))
            drop_typed(*context, keeper);
        keep_now(*context, keeper);
    });
}

void keep_now(const AppContext& context, const TextKeeper& keeper) {
    if (is_unsaved(context, keeper))
        keep_text(kept_folder(context), keeper.file, context.app.input_value(keeper.editor_path),
                  keeper.begun_on,
                  offers_last(context, keeper) ? KeptBefore::Stays : KeptBefore::Replaced);
}

void stop_keeping(const AppContext& context, TextKeeper& keeper) {
    ++keeper.generation;
    drop_typed(context, keeper);
    withdraw_offer(context, keeper);
}

std::string offer_message(const TextKeeper& keeper) {
    return keeper.offered ? "Unsaved text from " + keeper.offered->date + " was kept"
                          : std::string();
}

std::string kept_folder(const AppContext& context) {
    return context.app.data_folder.empty() ? std::string() : context.app.data_folder + "/unsaved";
}

} // namespace Lumenfold
