#include "orvane/inspector/properties.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <locale>
#include <memory>
#include <optional>
#include <sstream>
#include <utility>

#include "orvane/commons/className.h"
#include "orvane/display/graphics/quartz/QuartzFillStyleable.h"
#include "orvane/display/graphics/quartz/QuartzStrokeStyleable.h"
#include "orvane/display/graphics/quartz/QuartzTextStyleable.h"
#include "orvane/display/native/NativeLayer.h"
#include "orvane/embedding/childrenOf.h"
#include "orvane/embedding/kindOf.h"
#include "orvane/embedding/labelOf.h"
#include "orvane/embedding/textOf.h"
#include "orvane/inspector/pathOf.h"
#include "orvane/orvane.h"
#include "platform/appkit/NSBackingStore.h"
#include "platform/appkit/NSView.h"
#include "platform/quartzcore/CAMediaTime.h"

namespace orvane::inspector {

using display::DisplayLayer;
using display::DisplayObject;
using display::geometry::Matrix;
namespace graphics = display::graphics;
using Numbers = std::vector<double>;
using Set = std::function<bool(const std::string&)>;

namespace {

// ---- values as text ----

// At most two decimals.
std::string format(double number) {
    char text[64];
    std::snprintf(text, sizeof text, "%.2f", number);
    std::string result = text;
    if (std::isfinite(number)) {
        result.erase(result.find_last_not_of('0') + 1);
        if (result.back() == '.') {
            result.pop_back();
        }
    }
    return result == "-0" ? "0" : result;
}

std::string format(const Numbers& numbers) {
    std::string result;
    for (const double number : numbers) {
        result += (result.empty() ? "" : "  ") + format(number);
    }
    return result;
}

std::string format(const display::geometry::Rect<double>& rect) {
    return format(Numbers{rect.x, rect.y, rect.width, rect.height});
}

// Returns the numbers of a text if it consists of exactly so many finite ones.
std::optional<Numbers> parseNumbers(std::string text, std::size_t count) {
    std::ranges::replace(text, ',', ' ');
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    Numbers numbers;
    for (double number = 0; stream >> number;) {
        numbers.push_back(number);
    }
    const bool isComplete = stream.eof() && numbers.size() == count &&
                            std::ranges::all_of(numbers, [](double n) { return std::isfinite(n); });
    return isComplete ? std::optional(numbers) : std::nullopt;
}

std::string formatColor(const graphics::quartz::Color& color) {
    if (!(color.a > 0)) {
        return "none";
    }
    const auto byte = [](float component) {
        return static_cast<unsigned>(std::clamp(std::lround(component * 256) - 1, 0L, 255L));
    };
    char text[16];
    std::snprintf(text, sizeof text, byte(color.a) == 255 ? "#%02X%02X%02X" : "#%02X%02X%02X%02X",
                  byte(color.r), byte(color.g), byte(color.b), byte(color.a));
    return text;
}

// Returns alpha in bits 24 to 31, then red, green and blue.
std::optional<unsigned> parseColor(const std::string& text) {
    const std::string digits = text.starts_with('#') ? text.substr(1) : text;
    if ((digits.size() != 6 && digits.size() != 8) ||
        digits.find_first_not_of("0123456789abcdefABCDEF") != std::string::npos) {
        return {};
    }
    const auto number = static_cast<unsigned>(std::stoul(digits, nullptr, 16));
    return digits.size() == 6 ? number | 0xFF000000U : number >> 8 | number << 24;
}

std::string yesOrNo(bool is) {
    return is ? "yes" : "no";
}

// ---- functions that change values ----

// Calls `change` with the object if it is alive and a T.
template <typename T, typename Change>
Set setter(const std::weak_ptr<DisplayObject>& object, Change change) {
    return [object, change](const std::string& text) {
        const auto alive = std::dynamic_pointer_cast<T>(object.lock());
        return alive && change(*alive, text);
    };
}

template <typename T, typename Change>
Set numbersSetter(const std::weak_ptr<DisplayObject>& object, std::size_t count, Change change) {
    return setter<T>(object, [count, change](T& alive, const std::string& text) {
        const std::optional<Numbers> numbers = parseNumbers(text, count);
        if (numbers) {
            const std::vector<float> floats(numbers->begin(), numbers->end());
            change(alive, floats);
        }
        return numbers.has_value();
    });
}

template <typename T, typename Change>
Set colorSetter(const std::weak_ptr<DisplayObject>& object, Change change) {
    return setter<T>(object, [change](T& alive, const std::string& text) {
        const std::optional<unsigned> color = parseColor(text);
        if (color) {
            change(alive, *color);
        }
        return color.has_value();
    });
}

// ---- sections ----

using Weak = std::weak_ptr<DisplayObject>;

Section identityOf(DisplayObject& object, const Weak& weak) {
    Section section{"Object", {}};
    auto& list = section.properties;
    list.push_back({"kind", embedding::kindOf(object) + "  #" + std::to_string(object.getId())});
    list.push_back({"path", pathOf(object), {}, Property::Kind::Text, true});
    list.push_back({"label", embedding::labelOf(object),
                    setter<DisplayObject>(weak, [](auto& alive, const std::string& text) {
                        alive.getOrCreateAccessibilityElement()->setLabel(text);
                        return true;
                    })});
    const auto setContent = [](auto& alive, const std::string& text) {
        alive.setContent(text);
        return true;
    };
    if (dynamic_cast<graphics::Text*>(&object) != nullptr) {
        list.push_back(
            {"text", embedding::textOf(object), setter<graphics::Text>(weak, setContent)});
    } else if (const auto* const input = dynamic_cast<graphics::InputText*>(&object);
               input != nullptr && !input->isSecure()) {
        list.push_back(
            {"text", embedding::textOf(object), setter<graphics::InputText>(weak, setContent)});
    }
    list.push_back({"visible", yesOrNo(object.isVisible()),
                    setter<DisplayObject>(weak,
                                          [](auto& alive, const std::string& text) {
                                              alive.setVisible(text == "yes");
                                              return true;
                                          }),
                    Property::Kind::Toggle});
    if (const auto& children = embedding::childrenOf(object); !children.empty()) {
        list.push_back({"children", std::to_string(children.size())});
    }
    return section;
}

// The box of an object that has one, and how it is changed.
void addBox(std::vector<Property>& list, DisplayObject& object, const Weak& weak) {
    const auto setBounds = [](auto& alive, const std::vector<float>& n) {
        alive.setBounds({double{n[0]}, double{n[1]}, double{n[2]}, double{n[3]}});
    };
    if (auto* const circle = dynamic_cast<graphics::Circle*>(&object)) {
        const auto box = circle->getInnerBounds();
        list.push_back({"x y r", format(Numbers{box.x, box.y, box.width / 2}),
                        numbersSetter<graphics::Circle>(weak, 3, [](auto& alive, const auto& n) {
                            alive.set(n[0], n[1], n[2]);
                        })});
    } else if (auto* const rect = dynamic_cast<graphics::Rect*>(&object)) {
        list.push_back({"x y w h", format(rect->getInnerBounds()),
                        numbersSetter<graphics::Rect>(weak, 4, [](auto& alive, const auto& n) {
                            alive.set(n[0], n[1], n[2], n[3]);
                        })});
    } else if (auto* const ellipse = dynamic_cast<graphics::Ellipse*>(&object)) {
        list.push_back({"x y w h", format(ellipse->getInnerBounds()),
                        numbersSetter<graphics::Ellipse>(weak, 4, [](auto& alive, const auto& n) {
                            alive.set(n[0], n[1], n[2], n[3]);
                        })});
    } else if (auto* const sized = dynamic_cast<graphics::SizedContainer*>(&object)) {
        list.push_back({"bounds", format(sized->getBounds()),
                        numbersSetter<graphics::SizedContainer>(weak, 4, setBounds)});
    } else if (auto* const input = dynamic_cast<graphics::InputText*>(&object)) {
        list.push_back({"bounds", format(input->getBounds()),
                        numbersSetter<graphics::InputText>(weak, 4, setBounds)});
    } else if (auto* const bounded =
                   dynamic_cast<graphics::BoundedObject<graphics::Drawable>*>(&object)) {
        list.push_back({"bounds", format(bounded->getBounds())});
    }
}

Section geometryOf(DisplayObject& object, const Weak& weak) {
    Section section{"Geometry", {}};
    auto& list = section.properties;
    list.push_back({"frame", format(object.getFrame())});
    if (object.getScrollContainer()) {
        list.push_back({"on screen", format(object.getFrameOnScreen())});
    }
    addBox(list, object, weak);
    const Matrix& m = object.getTransformation();
    list.push_back({"moved by", format(Numbers{m.m02, m.m12}),
                    numbersSetter<DisplayObject>(weak, 2, [](auto& alive, const auto& n) {
                        const Matrix& old = alive.getTransformation();
                        alive.setMatrix(static_cast<float>(old.m00), static_cast<float>(old.m01),
                                        n[0], static_cast<float>(old.m10),
                                        static_cast<float>(old.m11), n[1]);
                    })});
    list.push_back({"matrix", format(Numbers{m.m00, m.m01, m.m10, m.m11}),
                    numbersSetter<DisplayObject>(weak, 4, [](auto& alive, const auto& n) {
                        const Matrix& old = alive.getTransformation();
                        alive.setMatrix(n[0], n[1], static_cast<float>(old.m02), n[2], n[3],
                                        static_cast<float>(old.m12));
                    })});
    if (const auto* const scroll = dynamic_cast<graphics::ScrollContainer*>(&object)) {
        const auto offset = scroll->getContentOffset();
        list.push_back(
            {"offset", format(Numbers{offset.x, offset.y}),
             numbersSetter<graphics::ScrollContainer>(weak, 2, [](auto& alive, const auto& n) {
                 alive.setContentOffset({double{n[0]}, double{n[1]}});
             })});
    }
    return section;
}

Section styleOf(DisplayObject& object, const Weak& weak) {
    Section section{"Style", {}};
    auto& list = section.properties;
    if (const auto* const fill = dynamic_cast<graphics::quartz::QuartzFillStyleable*>(&object)) {
        list.push_back({"fill",
                        fill->isGradientMode() ? "gradient" : formatColor(fill->getFillColor()),
                        colorSetter<graphics::FillStyleable>(
                            weak, [](auto& alive, unsigned argb) { alive.setFillColor(argb); }),
                        Property::Kind::Color});
    }
    const auto* const text = dynamic_cast<graphics::Text*>(&object);
    if (const auto* const stroke = dynamic_cast<graphics::quartz::QuartzStrokeStyleable*>(&object);
        stroke != nullptr && text == nullptr) {
        list.push_back({"stroke", formatColor(stroke->getStrokeColor()),
                        colorSetter<graphics::StrokeStyleable>(
                            weak, [](auto& alive, unsigned argb) { alive.setStrokeColor(argb); }),
                        Property::Kind::Color});
        list.push_back(
            {"width", format(double{stroke->getStrokeWidth()}),
             numbersSetter<graphics::StrokeStyleable>(
                 weak, 1, [](auto& alive, const auto& n) { alive.setStrokeWidth(n[0]); })});
        if (const auto& dashes = stroke->getStrokeDashArray(); !dashes.empty()) {
            list.push_back({"dashes", format(dashes)});
        }
    }
    if (auto* const style = dynamic_cast<graphics::quartz::QuartzTextStyleable*>(&object)) {
        list.push_back({"font", style->getFont(),
                        setter<graphics::TextStyleable>(weak, [](auto& alive, const auto& name) {
                            alive.setFont(name);
                            return true;
                        })});
        list.push_back({"size", format(double{style->getTextSize()}),
                        numbersSetter<graphics::TextStyleable>(
                            weak, 1, [](auto& alive, const auto& n) { alive.setTextSize(n[0]); })});
    }
    return section;
}

Section listenersOf(const DisplayObject& object) {
    Section section{"Listeners", {}};
    for (const auto& [type, count] : object.countListeners()) {
        section.properties.push_back({commons::className(type), std::to_string(count)});
    }
    return section;
}

Section layerSection(DisplayLayer& layer) {
    Section section{"Layer", {}};
    auto& list = section.properties;
    list.push_back({"class", commons::className(typeid(layer))});
    list.push_back({"frame", format(layer.getLayerFrame())});
    list.push_back({"objects", std::to_string(layer.getObjects().size())});
    list.push_back({"sublayers", std::to_string(layer.getSublayers().size())});
    list.push_back({"state", std::string(layer.isHidden() ? "hidden" : "shown") +
                                 (layer.isDirty() ? ", dirty" : "") +
                                 (layer.isValidationLocked() ? ", locked" : "")});
    return section;
}

Section viewSection(const DisplayLayer& layer) {
    Section section{"View", {}};
    const auto* const native = dynamic_cast<const display::native::NativeLayer*>(&layer);
    const auto view = native != nullptr ? native->getLayerHandler() : nullptr;
    if (!view) {
        return section;
    }
    auto& list = section.properties;
    list.push_back({"frame", format(display::geometry::Rect<double>(view->frame()))});
    list.push_back({"opacity", format(view->layer()->opacity()),
                    [weak = std::weak_ptr(view)](const std::string& text) {
                        const auto number = parseNumbers(text, 1);
                        const auto alive = weak.lock();
                        if (number && alive) {
                            alive->layer()->setOpacity(std::clamp(number->front(), 0.0, 1.0));
                        }
                        return number && alive;
                    }});
    list.push_back({"z", format(view->layer()->zPosition())});
    if (!view->clips().empty()) {
        list.push_back({"clips", std::to_string(view->clips().size())});
    }
    if (const auto* const store = view->backingStore()) {
        const auto& area = store->area();
        list.push_back({"stored", format(Numbers{static_cast<double>(area.width()),
                                                 static_cast<double>(area.height())}) +
                                      " px,  " +
                                      format(static_cast<double>(area.area()) * 4 / 1024) +
                                      " KiB"});
    }
    if (view->layer()->isAnimating(platform::CACurrentMediaTime())) {
        list.push_back({"animated", "yes"});
    }
    return section;
}

}  // namespace

std::vector<Section> propertiesOf(const Node& node) {
    std::vector<Section> sections;
    std::shared_ptr<DisplayLayer> layer = node.layer.lock();
    if (const auto object = node.object.lock()) {
        sections = {identityOf(*object, object), geometryOf(*object, object),
                    styleOf(*object, object), listenersOf(*object)};
        layer = object->getAscendingLayer();
    }
    if (layer) {
        sections.push_back(layerSection(*layer));
        sections.push_back(viewSection(*layer));
    }
    std::erase_if(sections, [](const Section& section) { return section.properties.empty(); });
    return sections;
}

}  // namespace orvane::inspector
