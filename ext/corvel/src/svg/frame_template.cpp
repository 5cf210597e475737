#include "svg/frame_template.h"

#include "svg/track_sampler.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <utility>

namespace Corvel::Svg {
namespace {

constexpr std::size_t TYPICAL_VALUE_SIZE = 48;

/// The place of a property among those of its element, in the order in which they are written.
using PropertyKey = std::pair<int, std::string_view>;

PropertyKey property_of(const AnimationTrack& track) {
    switch (track.kind) {
    case TrackKind::Opacity:
        return {1, "opacity"};
    case TrackKind::Attribute:
        return {2, track.attribute};
    default:
        return {0, "transform"};
    }
}

/// A track that writes a property of one element.
struct Writer {
    std::int32_t element;
    PropertyKey property;
    std::size_t track;

    bool same_place(const Writer& other) const {
        return element == other.element && property == other.property;
    }
};

/// Part of the source that is replaced.
struct Edit {
    std::size_t position;
    std::size_t length;
    std::size_t first_writer = 0; ///< none if it is equal to `last_writer`
    std::size_t last_writer = 0;
    bool adds_attribute = false;
};

/// The writers, sorted by element and property, the latest track first. What a later track hides at
/// all times is left out; many rules can name the same many elements, so that is found by set.
std::vector<Writer> collect_writers(const std::vector<AnimationTrack>& tracks) {
    std::vector<Writer> writers;
    std::set<std::pair<ElementSet, PropertyKey>> hidden;
    for (std::size_t index = tracks.size(); index-- > 0;) {
        const AnimationTrack& track = tracks[index];
        const PropertyKey property = property_of(track);
        if (hidden.contains({track.elements, property}))
            continue;
        for (const std::int32_t element : *track.elements)
            writers.push_back({element, property, index});
        if (always_has_value(track))
            hidden.insert({track.elements, property});
    }
    std::ranges::stable_sort(writers, {}, [](const Writer& writer) {
        return std::pair(writer.element, writer.property);
    });
    return writers;
}

} // namespace

class FrameTemplateBuilder {
public:
    FrameTemplateBuilder(FrameTemplate& frame, const SvgDocument& document,
                         std::vector<AnimationTrack> tracks)
        : frame_(frame)
        , document_(document)
        , tracks_(std::move(tracks))
        , writers_(collect_writers(tracks_)) {}

    void build() {
        drop_elements();
        write_properties();
        std::ranges::stable_sort(edits_, {}, &Edit::position);
        const std::string_view text = document_.text;
        std::size_t cursor = 0;
        for (const Edit& edit : edits_) {
            if (edit.position < cursor)
                continue; // inside an element that is dropped
            frame_.literals_.append(text.substr(cursor, edit.position - cursor));
            if (edit.first_writer < edit.last_writer)
                add_hole(edit);
            cursor = edit.position + edit.length;
        }
        frame_.literals_.append(text.substr(cursor));
    }

private:
    void drop_elements() {
        for (const std::int32_t index : document_.dropped) {
            const SvgElement& element = document_.elements[index];
            if (element.start < element.end)
                edits_.push_back({element.start, element.end - element.start});
        }
    }

    void write_properties() {
        for (std::size_t first = 0; first < writers_.size();) {
            std::size_t last = first + 1;
            while (last < writers_.size() && writers_[last].same_place(writers_[first]))
                ++last;
            const SvgElement& element = document_.elements[writers_[first].element];
            if (const auto* found = find_attribute(element, writers_[first].property.second))
                edits_.push_back({found->value_start, found->value_end - found->value_start, first,
                                  last, false});
            else
                edits_.push_back({element.name_end, 0, first, last, true});
            first = last;
        }
    }

    void add_hole(const Edit& edit) {
        FrameTemplate::Hole hole;
        hole.first_writer = frame_.writers_.size();
        bool is_certain = false;
        for (std::size_t i = edit.first_writer; i < edit.last_writer && !is_certain; ++i) {
            frame_.writers_.push_back(keep_track(writers_[i].track));
            is_certain = always_has_value(tracks_[writers_[i].track]);
        }
        hole.last_writer = frame_.writers_.size();
        if (edit.adds_attribute) {
            hole.lead.append(" ").append(writers_[edit.first_writer].property.second).append("=\"");
            hole.tail = '"';
        } else {
            hole.fallback = document_.text.substr(edit.position, edit.length);
        }
        std::string tail;
        if (is_certain) { // then the frame around the value never changes
            frame_.literals_ += std::exchange(hole.lead, {});
            tail = std::exchange(hole.tail, {});
        }
        hole.literal_end = frame_.literals_.size();
        frame_.literals_ += tail;
        frame_.holes_.push_back(std::move(hole));
    }

    /// The index of the track among those that the frame needs.
    std::size_t keep_track(std::size_t index) {
        const auto [found, is_new] = kept_.try_emplace(index, frame_.tracks_.size());
        if (is_new)
            frame_.tracks_.push_back(tracks_[index]);
        return found->second;
    }

    FrameTemplate& frame_;
    const SvgDocument& document_;
    const std::vector<AnimationTrack> tracks_;
    const std::vector<Writer> writers_;
    std::vector<Edit> edits_;
    std::unordered_map<std::size_t, std::size_t> kept_;
};

FrameTemplate::FrameTemplate(const SvgDocument& document, std::vector<AnimationTrack> tracks) {
    FrameTemplateBuilder(*this, document, std::move(tracks)).build();
}

/// A frame that is being put together.
class FrameWriter {
public:
    FrameWriter(const FrameTemplate& frame, double ms)
        : frame_(frame)
        , ms_(ms)
        , written_(frame.tracks_.size()) {
        out_.reserve(frame.literals_.size() + frame.holes_.size() * TYPICAL_VALUE_SIZE);
    }

    std::string write() {
        std::size_t cursor = 0;
        for (const FrameTemplate::Hole& hole : frame_.holes_) {
            out_.append(frame_.literals_, cursor, hole.literal_end - cursor);
            cursor = hole.literal_end;
            fill(hole);
        }
        out_.append(frame_.literals_, cursor);
        return std::move(out_);
    }

private:
    /// Where the value of a track stands that was written already, for one of its elements.
    struct Written {
        std::size_t position = 0;
        std::size_t length = 0;
    };

    void fill(const FrameTemplate::Hole& hole) {
        const std::size_t start = out_.size();
        out_ += hole.lead;
        for (std::size_t i = hole.first_writer; i < hole.last_writer; ++i) {
            if (append_value(frame_.writers_[i])) {
                out_ += hole.tail;
                return;
            }
        }
        out_.resize(start);
        out_ += hole.fallback;
    }

    bool append_value(std::size_t track) {
        Written& known = written_[track];
        if (known.length > 0) {
            out_.append(out_, known.position, known.length);
            return true;
        }
        const std::size_t position = out_.size();
        if (!append_track_value(out_, frame_.tracks_[track], ms_))
            return false;
        known = {position, out_.size() - position};
        return true;
    }

    const FrameTemplate& frame_;
    const double ms_;
    std::vector<Written> written_;
    std::string out_;
};

std::string FrameTemplate::at(double ms) const {
    return FrameWriter(*this, ms).write();
}

} // namespace Corvel::Svg
