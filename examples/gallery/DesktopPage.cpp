#include "DesktopPage.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>

namespace gallery {

using namespace orvane::display;
namespace system = orvane::system;

namespace {

constexpr float kLeft = 18;
constexpr float kWidth = Page::kCardWidth - 2 * kLeft;
constexpr float kHalf = (kWidth - 10) / 2;  // one of two in a row
constexpr float kStatusSize = 12;
constexpr float kButtonHeight = 34;
constexpr float kBottom = Page::kCardHeight - kLeft - kButtonHeight;  // of a row of buttons

Controls::Rect leftHalf(float y) {
    return {kLeft, y, kHalf, kButtonHeight};
}

Controls::Rect rightHalf(float y) {
    return {kLeft + kHalf + 10, y, kHalf, kButtonHeight};
}

std::string fileName(const std::string& path) {
    return std::filesystem::path(path).filename();
}

std::string faceBytes() {
    std::ifstream file(system::getResourceDirectory() + "/res/images/face.png", std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// Scales a picture so that it fits into its place, and puts it in the middle.
void fit(graphics::Image& picture, const Controls::Rect& place) {
    const auto bounds = picture.getBounds();
    const auto width = static_cast<float>(bounds.width);
    const auto height = static_cast<float>(bounds.height);
    const float scale = std::min((place.width - 16) / std::max(width, 1.0F),
                                 (place.height - 16) / std::max(height, 1.0F));
    picture.setMatrix(scale, 0, place.x + (place.width - scale * width) / 2, 0, scale,
                      place.y + (place.height - scale * height) / 2);
}

void show(graphics::Text& text, const std::string& content) {
    text.setContent(graphics::shortenText(content, {"DejaVu Sans", kStatusSize}, kWidth));
}

std::shared_ptr<graphics::Rect> addPanel(ContainerObject& inside, float y, float height) {
    const auto panel = DisplayFactory::createRect();
    panel->set(kLeft, y, kWidth, height);
    panel->setRx(12);
    panel->setRy(12);
    inside.add(panel);
    return panel;
}

}  // namespace

DesktopPage::DesktopPage() {
    const auto add = [this](const char* title, void (DesktopPage::*draw)(ContainerObject&)) {
        page_.addCard(title, [this, draw](ContainerObject& inside) { (this->*draw)(inside); });
    };
    add("Clipboard, text", &DesktopPage::drawClipboardText);
    add("Clipboard, picture", &DesktopPage::drawClipboardPicture);
    add("Drops from other programs", &DesktopPage::drawDrop);
    add("Open and save dialogs", &DesktopPage::drawDialogs);
    add("Addresses", &DesktopPage::drawAddress);
    add("Notifications", &DesktopPage::drawNotification);
    add("The window", &DesktopPage::drawWindow);
    add("Saving before the window closes", &DesktopPage::drawClosing);
    add("Appearance", &DesktopPage::drawAppearance);
    add("Pointer and wheel", &DesktopPage::drawPointer);
    add("Shapes of the pointer", &DesktopPage::drawCursors);
    add("Keys, the focus and a shortcut", &DesktopPage::drawKeys);
}

void DesktopPage::drawIcon(ContainerObject& inside) {
    const auto screen = DisplayFactory::createRect();
    screen->set(1, 2, 22, 15);
    screen->setRx(3);
    screen->setRy(3);
    outline(screen, palette::kWhite, 2);
    inside.add(screen);
    const auto foot = DisplayFactory::createRect();
    foot->set(6, 20, 12, 2.5F);
    paint(foot, palette::kAmber);
    inside.add(foot);
}

std::shared_ptr<graphics::Text> DesktopPage::addStatus(ContainerObject& inside, float y,
                                                       const std::string& content) {
    return addText(inside, kLeft, y, content, kStatusSize, palette::kCaption);
}

std::shared_ptr<graphics::Image> DesktopPage::addPicture(ContainerObject& inside,
                                                         const Controls::Rect& place) {
    const auto frame = DisplayFactory::createRect();
    frame->set(place.x, place.y, place.width, place.height);
    frame->setRx(12);
    frame->setRy(12);
    paint(frame, palette::kPaper);
    inside.add(frame);
    const auto picture = DisplayFactory::createImage();
    inside.add(picture);
    controls_.listeners().add<graphics::ImageStateEvent>(
        *picture, [place, weak = std::weak_ptr(picture)](const graphics::ImageStateEvent& event) {
            if (const auto held = weak.lock();
                held && event.state == graphics::ImageState::Loaded) {
                fit(*held, place);
            }
        });
    return picture;
}

void DesktopPage::drawClipboardText(ContainerObject& inside) {
    const std::string words = "A text on its way to another program";
    paint(addPanel(inside, 44, 56), palette::kPaper);
    addText(inside, kLeft + 14, 77, words, 11, palette::kInk, "DejaVu Serif");
    const auto status = addStatus(inside, 136, "Nothing was copied yet.");
    controls_.addButton(inside, leftHalf(kBottom), "Copy", [status, words] {
        system::copyText(words);
        show(*status, "Copied.");
    });
    controls_.addButton(inside, rightHalf(kBottom), "Paste", [status] {
        system::pasteText([status](const std::string& text) {
            show(*status, text.empty() ? "There is no text to paste." : "Pasted: " + text);
        });
    });
}

void DesktopPage::drawClipboardPicture(ContainerObject& inside) {
    static constexpr Controls::Rect kOriginal{kLeft, 44, kHalf, 116};
    static constexpr Controls::Rect kPasted{kLeft + kHalf + 10, 44, kHalf, 116};
    const auto original = addPicture(inside, kOriginal);
    original->setContent(faceBytes());
    fit(*original, kOriginal);
    const auto pasted = addPicture(inside, kPasted);
    controls_.addButton(inside, leftHalf(kBottom), "Copy",
                        [] { system::copyPicture(faceBytes()); });
    controls_.addButton(inside, rightHalf(kBottom), "Paste", [pasted] {
        system::pastePicture([pasted](const std::string& bytes) {
            if (!bytes.empty()) {
                pasted->setContent(bytes);
                fit(*pasted, kPasted);
            }
        });
    });
}

void DesktopPage::drawDrop(ContainerObject& inside) {
    const auto target = DisplayFactory::createContainer();
    inside.add(target);
    const auto area = addPanel(*target, 44, 118);
    paint(area, palette::kPaper, palette::kFaint, 2);
    area->setStrokeDashArray({8, 6});
    const auto light = addPanel(*target, 44, 118);
    outline(light, palette::kAccent, 3);
    light->setVisible(false);
    const auto hint = addText(*target, kLeft + kWidth / 2, 108, "Drop files or a text here", 13);
    hint->setTextAlign(graphics::TextAlign::Center);
    const auto status = addStatus(inside, 190, "Nothing was dropped yet.");
    controls_.listeners().add<events::DropEvent>(
        *target, [light, status](const events::DropEvent& event) {
            light->setVisible(event.phase == events::DropPhase::Over);
            if (event.phase == events::DropPhase::Drop) {
                std::string names;
                for (const std::string& file : event.files) {
                    names += (names.empty() ? "" : ", ") + fileName(file);
                }
                show(*status, names.empty() ? "Text: " + event.text : "Files: " + names);
            }
            return true;
        });
}

void DesktopPage::drawDialogs(ContainerObject& inside) {
    const auto picture = addPicture(inside, {kLeft, 40, kWidth, 106});
    const auto status = addStatus(inside, 167, "Choose a picture.");
    const std::vector<system::FileFilter> pictures = {
        {"Pictures", {"*.png", "*.jpg", "*.webp", "*.gif", "*.svg"}}};
    controls_.addButton(
        inside, leftHalf(kBottom), "Open…",
        [picture, status, pictures] {
            system::showOpenDialog(
                {.title = "Open a picture", .filters = pictures},
                [picture, status](const std::vector<std::string>& paths) {
                    if (!paths.empty()) {
                        picture->load(paths.front());
                    }
                    show(*status, paths.empty() ? "Nothing was chosen." : fileName(paths.front()));
                });
        },
        true);
    controls_.addButton(inside, rightHalf(kBottom), "Save…", [status] {
        system::showSaveDialog(
            {.title = "Save the face", .name = "face.png"}, [status](const std::string& path) {
                if (path.empty()) {
                    show(*status, "Nothing was saved.");
                    return;
                }
                std::ofstream file(path, std::ios::binary);
                const bool isSaved = (file << faceBytes()).flush().good();
                show(*status, (isSaved ? "Saved " : "Cannot write ") + fileName(path));
            });
    });
}

void DesktopPage::drawAddress(ContainerObject& inside) {
    const std::string address = "https://example.org";
    addText(inside, kLeft, 82, address, 20, palette::kAccent)->setDecoration(true, false);
    const auto status = addStatus(inside, 136, "The desktop knows the program for it.");
    controls_.addButton(inside, leftHalf(kBottom), "Open", [status, address] {
        system::openUrl(address, [status](bool isOpen) {
            show(*status, isOpen ? "It is open." : "There is no program for it.");
        });
    });
}

void DesktopPage::drawNotification(ContainerObject& inside) {
    const auto note = addPanel(inside, 44, 64);
    paint(note, {0xFFFFFFFF, 0xFF333942});
    note->setShadow({0, 3, 12, 0x40000000});
    addText(inside, kLeft + 16, 71, "Tea", 13, palette::kInk, "DejaVu Sans Bold");
    addText(inside, kLeft + 16, 92, "It has drawn for four minutes.", 12, palette::kCaption);
    const auto status = addStatus(inside, 142, "Nothing was shown yet.");
    controls_.addButton(
        inside, leftHalf(kBottom), "Show",
        [status] {
            system::showNotification(
                {.title = "Tea", .text = "It has drawn for four minutes.", .tag = "tea"},
                [status] { show(*status, "The notification was pressed."); });
            show(*status, "Press it, or take it back.");
        },
        true);
    controls_.addButton(inside, rightHalf(kBottom), "Take back", [status] {
        system::withdrawNotification("tea");
        show(*status, "It was taken back.");
    });
}

void DesktopPage::drawWindow(ContainerObject& inside) {
    const auto window = Display::instance()->getWindow();
    const auto status = addStatus(inside, 150, "A host may refuse.");
    const auto say = [status](bool isDone, const char* what) {
        show(*status, isDone ? what : "The host refuses.");
    };
    const auto showFullScreen =
        controls_.addSwitch(inside, kLeft, 52, "Full screen", [window, say](bool isOn) {
            say(window->setFullScreen(isOn), isOn ? "It fills the screen." : "It is a window.");
        });
    controls_.listeners().add<events::FullScreenChangedEvent>(
        *window, [showFullScreen](const events::FullScreenChangedEvent& event) {
            showFullScreen(event.isFullScreen);
        });
    const auto showLeast = std::make_shared<std::function<void(bool)>>();
    *showLeast = controls_.addSwitch(
        inside, kLeft, 92, "At least 640 x 400", [window, say, showLeast](bool isOn) {
            const bool isDone = window->setMinimumSize(isOn ? geometry::Size<double>(640, 400)
                                                            : geometry::Size<double>());
            say(isDone, isOn ? "It cannot be made smaller." : "It can be made smaller.");
            if (isDone) {
                (*showLeast)(isOn);
            }
        });
    controls_.addButton(inside, leftHalf(kBottom), "Title", [window, say, count = 0]() mutable {
        const auto title = "Gallery, title " + std::to_string(++count);
        say(window->setTitle(title), title.c_str());
    });
}

void DesktopPage::drawClosing(ContainerObject& inside) {
    const auto showState = std::make_shared<std::function<void(bool)>>();
    *showState = controls_.addSwitch(inside, kLeft, 52, "Save first", [this, showState](bool isOn) {
        savesFirst_ = isOn;
        (*showState)(isOn);
    });
    const auto track = addPanel(inside, 108, 10);
    track->setRx(5);
    track->setRy(5);
    paint(track, palette::kPaper);
    const auto bar = DisplayFactory::createRect();
    bar->set(kLeft, 108, 0, 10);
    bar->setRx(5);
    bar->setRy(5);
    paint(bar, palette::kAccent);
    inside.add(bar);
    const auto status = addStatus(inside, 150, "A window can be held open.");
    saving_ = std::make_shared<animation::FrameAnimation>("save", [bar, status](float phase) {
        bar->setWidth(kWidth * phase);
        show(*status, phase < 1 ? "The window waits for what is saved." : "Saved.");
    });
    saving_->setDuration(1.2F);
    saving_->setCompletionCallback([] { Display::instance()->getWindow()->quit(); });
    controls_.addButton(inside, leftHalf(kBottom), "Close",
                        [] { Display::instance()->getWindow()->requestClose(); });
    controls_.listeners().add<events::CloseRequestEvent>(*Display::instance()->getWindow(),
                                                         [this](const auto&) { return close(); });
}

events::CloseDecision DesktopPage::close() {
    if (!savesFirst_) {
        return events::CloseDecision::Close;
    }
    if (!std::exchange(isSaving_, true)) {
        saving_->run();
    }
    return events::CloseDecision::Hold;
}

void DesktopPage::drawAppearance(ContainerObject& inside) {
    const auto swatch = DisplayFactory::createCircle();
    swatch->set(Page::kCardWidth - kLeft - 44, 44, 22);
    paint(swatch, palette::kAccent);
    inside.add(swatch);
    const std::pair<const char*, std::function<std::string(const Appearance&)>> lines[] = {
        {"Colors", [](const auto& look) { return look.isDark ? "dark" : "light"; }},
        {"Motion", [](const auto& look) { return look.reducesMotion ? "reduced" : "all"; }},
        {"Texts",
         [](const auto& look) { return std::to_string(std::lround(100 * look.textScale)) + " %"; }},
        {"Font",
         [](const auto& look) {
             return look.font + " " + std::to_string(std::lround(look.textSize));
         }},
        {"Accent",
         [](const auto& look) {
             std::array<char, 8> code{};
             std::snprintf(code.data(), code.size(), "#%06X", look.accentColor & 0xFFFFFFU);
             return std::string(code.data());
         }},
    };
    float y = 66;
    for (const auto& [name, describe] : lines) {
        addText(inside, kLeft, y, name, 13, palette::kCaption);
        const auto value = addText(inside, kLeft + 72, y, "", 13, palette::kInk);
        Look::instance().follow(value, [describe = describe](Text& text) {
            text.setContent(describe(Look::instance().appearance()));
        });
        y += 36;
    }
}

}  // namespace gallery
