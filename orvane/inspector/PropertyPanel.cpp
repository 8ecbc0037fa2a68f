#include "orvane/inspector/PropertyPanel.h"

#include <algorithm>
#include <utility>

namespace orvane::inspector {

using display::DisplayFactory;
using display::UpdateLock;
namespace graphics = display::graphics;
namespace layout = display::layout;

namespace {

constexpr float kMargin = 14;
constexpr float kRowHeight = 24;
constexpr float kSectionGap = 14;
constexpr float kValueLeft = 92;
constexpr float kTextSize = 11;
constexpr float kTextTop = 5;
constexpr float kSwatch = 14;

bool haveSameForm(const std::vector<Section>& a, const std::vector<Section>& b) {
    return std::ranges::equal(a, b, [](const Section& one, const Section& other) {
        return one.title == other.title &&
               std::ranges::equal(one.properties, other.properties,
                                  [](const Property& p, const Property& q) {
                                      return p.name == q.name && p.kind == q.kind &&
                                             (p.set == nullptr) == (q.set == nullptr);
                                  });
    });
}

// As much of the end of a path as fits into a width.
std::string endOf(const std::string& path, float width) {
    std::string end = path;
    for (auto slash = path.find('/');
         slash != std::string::npos &&
         graphics::measureText(end, {kFont, kTextSize}).width > double{width};
         slash = path.find('/', slash + 1)) {
        end = "\u2026" + path.substr(slash);
    }
    return end;
}

unsigned swatchColor(const std::string& value) {
    if (!value.starts_with('#')) {
        return palette::kPanel;
    }
    const auto number = static_cast<unsigned>(std::stoul(value.substr(1), nullptr, 16));
    return value.size() == 7 ? number | 0xFF000000U : number >> 8 | number << 24;
}

}  // namespace

PropertyPanel::PropertyPanel()
    : container_(DisplayFactory::createContainer()),
      scroll_(
          DisplayFactory::createScrollContainer(graphics::ScrollContainer::Type::Vertical, false)) {
    container_->add(scroll_);
}

void PropertyPanel::resize(const display::geometry::Rect<double>& rect) {
    container_->setTranslate(static_cast<float>(rect.x), static_cast<float>(rect.y));
    scroll_->setBounds({0, 0, rect.width, rect.height});
    if (width_ != rect.width) {
        width_ = rect.width;
        build();
    }
}

void PropertyPanel::show(std::vector<Section> sections) {
    const bool isSameForm = haveSameForm(sections_, sections);
    sections_ = std::move(sections);
    if (!isSameForm) {
        build();
        return;
    }
    const UpdateLock lock(scroll_);
    for (std::size_t i = 0; i < sections_.size(); ++i) {
        for (std::size_t k = 0; k < sections_[i].properties.size(); ++k) {
            showValue(values_[i][k], sections_[i].properties[k]);
        }
    }
}

void PropertyPanel::clear() {
    sections_.clear();
    build();
}

void PropertyPanel::build() {
    const UpdateLock lock(scroll_);
    scroll_->clear();
    values_.clear();
    float y = kMargin;
    if (sections_.empty()) {
        const auto hint =
            makeText("Choose an object in the tree, or press Pick.", kTextSize, palette::kCaption);
        hint->setTranslate(kMargin, y);
        scroll_->add(hint);
    }
    for (std::size_t i = 0; i < sections_.size(); ++i) {
        const auto title = makeText(sections_[i].title, kTextSize, palette::kInk, true);
        title->setTranslate(kMargin, y);
        scroll_->add(title);
        y += kRowHeight;
        values_.emplace_back();
        for (std::size_t k = 0; k < sections_[i].properties.size(); ++k) {
            const auto name =
                makeText(sections_[i].properties[k].name, kTextSize, palette::kCaption);
            name->setTranslate(kMargin, y + kTextTop);
            scroll_->add(name);
            values_.back().push_back(makeValue(i, k, y));
            y += kRowHeight;
        }
        y += kSectionGap;
    }
}

PropertyPanel::Value PropertyPanel::makeValue(std::size_t section, std::size_t property, float y) {
    const Property& shown = sections_[section].properties[property];
    const float width = static_cast<float>(width_) - kValueLeft - kMargin;
    Value value;
    if (shown.kind == Property::Kind::Toggle) {
        value.toggle = std::make_shared<Button>(shown.name, [this, section, property] {
            const Property& pressed = sections_[section].properties[property];
            pressed.set(pressed.value == "yes" ? "no" : "yes");
        });
        scroll_->add(value.toggle->getBox()->getContainer());
        value.toggle->getBox()->layOut({double{kValueLeft}, double{y}, 52, kRowHeight - 3});
    } else if (shown.set == nullptr) {
        value.text = makeText("", kTextSize, palette::kInk);
        value.text->setTranslate(kValueLeft + 6, y + kTextTop);
        scroll_->add(value.text);
        if (shown.isCopied) {
            using Press = display::events::PointerEvent;
            const auto copies = listenerFor<Press>([this, section, property](const auto& event) {
                if (event.phase == display::events::PointerPhase::Down) {
                    system::copyText(sections_[section].properties[property].value);
                }
                return event.phase == display::events::PointerPhase::Down;
            });
            value.text->addListener<Press>(copies);
            value.text->setCursor(display::Cursor::Pointer);
            value.listeners = {copies};
        }
    } else {
        const auto ground = makeRect(palette::kField, 4);
        ground->set(kValueLeft, y, width, kRowHeight - 3);
        scroll_->add(ground);
        float left = kValueLeft + 6;
        if (shown.kind == Property::Kind::Color) {
            value.swatch = makeRect(palette::kPanel, 3);
            value.swatch->setStrokeColor(palette::kPale);
            value.swatch->setStrokeWidth(1);
            value.swatch->set(left, y + (kRowHeight - 3 - kSwatch) / 2, kSwatch, kSwatch);
            scroll_->add(value.swatch);
            left += kSwatch + 6;
        }
        value.field = makeField(kTextSize);
        value.field->setBounds({0, 0, double{kValueLeft + width - left - 4}, kRowHeight - 3});
        value.field->setTranslate(left, y);
        value.field->getOrCreateAccessibilityElement()->setLabel(sections_[section].title + ' ' +
                                                                 shown.name);
        scroll_->add(value.field);
        using Commit = graphics::InputText::CommitEvent;
        using Focus = graphics::InputText::FocusEvent;
        const auto commits = listenerFor<Commit>(
            [this, section, property](const auto&) { commit(section, property); });
        // What was typed and not entered is dropped.
        const auto leaves = listenerFor<Focus>([this, section, property](const auto& event) {
            if (!event.isFocused && section < values_.size()) {
                values_[section][property].shown.clear();
                values_[section][property].field->setTextColor(palette::kInk);
            }
        });
        value.field->addListener<Commit>(commits);
        value.field->addListener<Focus>(leaves);
        value.listeners = {commits, leaves};
    }
    showValue(value, shown);
    return value;
}

void PropertyPanel::showValue(Value& value, const Property& property) const {
    const bool isTyping = value.field && value.field->isFocused();
    if (isTyping || (value.shown == property.value && !value.shown.empty())) {
        return;
    }
    value.shown = property.value;
    if (value.text) {
        const float most = static_cast<float>(width_) - kValueLeft - kMargin - 6;
        setText(*value.text, property.isCopied
                                 ? endOf(property.value, most)
                                 : graphics::shortenText(property.value, {kFont, kTextSize}, most));
    }
    if (value.field && value.field->getContent() != property.value) {
        value.field->setContent(property.value);
    }
    if (value.swatch) {
        value.swatch->setFillColor(swatchColor(property.value));
    }
    if (value.toggle) {
        value.toggle->setLabel(property.value);
        value.toggle->setOn(property.value == "yes");
    }
}

void PropertyPanel::commit(std::size_t section, std::size_t property) {
    // The application's listeners may do anything while the value changes.
    const auto field = values_[section][property].field;
    const bool isValid = sections_[section].properties[property].set(field->getContent());
    field->setTextColor(isValid ? palette::kInk : palette::kRed);
    if (isValid) {
        field->unfocus();
    }
}

}  // namespace orvane::inspector
