#include "platform/coretext/CFMutableAttributedString.h"

#include <algorithm>

#include "platform/coretext/CTFont.h"
#include "platform/coretext/ShapedText.h"
#include "platform/coretext/validText.h"

namespace orvane::platform {

namespace {

// The beginning of the character that contains the byte.
std::size_t characterAt(const std::string& text, std::size_t byte) {
    while (byte > 0 && byte < text.size() &&
           (static_cast<unsigned char>(text[byte]) & 0xC0) == 0x80) {
        --byte;
    }
    return byte;
}

}  // namespace

void CFMutableAttributedString::replaceString(std::string_view text) {
    const CTAttributes attributes = runs_.empty() ? CTAttributes() : runs_.front().attributes;
    text_ = std::make_shared<std::string>(validText(text));
    runs_.clear();
    if (!text_->empty()) {
        runs_.push_back({range(), attributes});
    }
    shapedText_.reset();
}

void CFMutableAttributedString::append(std::string_view text, const CTAttributes& attributes) {
    const std::string added =
        validText(text.substr(0, kLongestText - std::min(kLongestText, length())));
    if (added.empty()) {
        return;
    }
    if (!runs_.empty() && runs_.back().attributes == attributes) {
        runs_.back().range.length += added.size();
    } else {
        runs_.push_back({{length(), added.size()}, attributes});
    }
    shapedText_.reset();
    if (text_.use_count() > 1) {
        text_ = std::make_shared<std::string>(*text_);
    }
    text_->append(added);
}

void CFMutableAttributedString::splitAt(std::size_t location) {
    const auto run = std::find_if(runs_.begin(), runs_.end(), [&](const Run& each) {
        return each.range.location < location && location < each.range.end();
    });
    if (run == runs_.end()) {
        return;
    }
    Run tail = *run;
    tail.range = {location, run->range.end() - location};
    run->range.length -= tail.range.length;
    runs_.insert(run + 1, std::move(tail));
}

template <typename Change>
void CFMutableAttributedString::change(CFRange range, Change&& change) {
    const std::size_t first = std::min(range.location, length());
    const std::size_t begin = characterAt(*text_, first);
    const std::size_t end = characterAt(*text_, first + std::min(range.length, length() - first));
    if (begin == end) {
        return;
    }
    splitAt(begin);
    splitAt(end);
    std::vector<Run> merged;
    merged.reserve(runs_.size());
    for (Run& run : runs_) {
        if (run.range.location >= begin && run.range.end() <= end) {
            change(run.attributes);
        }
        if (!merged.empty() && merged.back().attributes == run.attributes) {
            merged.back().range.length += run.range.length;
        } else {
            merged.push_back(std::move(run));
        }
    }
    runs_ = std::move(merged);
}

void CFMutableAttributedString::setFont(CFRange range, const std::shared_ptr<const CTFont>& font) {
    bool changed = false;
    change(range, [&](CTAttributes& attributes) {
        changed = changed || attributes.font != font;
        attributes.font = font;
    });
    if (changed) {
        shapedText_.reset();
    }
}

void CFMutableAttributedString::setForegroundColor(CFRange range, const CGColor& color) {
    change(range, [&](CTAttributes& attributes) { attributes.foregroundColor = color; });
}

void CFMutableAttributedString::setStrokeColor(CFRange range, const CGColor& color) {
    change(range, [&](CTAttributes& attributes) { attributes.strokeColor = color; });
}

void CFMutableAttributedString::setUnderline(CFRange range, bool underline) {
    change(range, [&](CTAttributes& attributes) { attributes.underline = underline; });
}

void CFMutableAttributedString::setAlignment(CFRange range, CTTextAlignment alignment) {
    change(range, [&](CTAttributes& attributes) { attributes.alignment = alignment; });
}

const CFMutableAttributedString::Run* CFMutableAttributedString::runAt(std::size_t location) const {
    if (runs_.empty()) {
        return nullptr;
    }
    const auto after =
        std::upper_bound(runs_.begin(), runs_.end(), location,
                         [](std::size_t at, const Run& run) { return at < run.range.location; });
    return &*(after - 1);
}

std::shared_ptr<const ShapedText> CFMutableAttributedString::shapedText() const {
    if (!shapedText_) {
        shapedText_ = ShapedText::shape(text_, runs_);
    }
    return shapedText_;
}

}  // namespace orvane::platform
