#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <regex>
#include <stdexcept>

#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSTextField.h"
#include "platform/appkit/NSWindow.h"
#include "platform/coretext/CTFont.h"
#include "tests/native/Stage.h"
#include "tests/support/TemporaryFolder.h"

namespace orvane::display {
namespace {

class DisplayTest : public Stage {};

TEST_F(DisplayTest, TheLastAddedObjectIsOnTopUntilItIsRemoved) {
    const auto red = rect(0, 0, 100, 100, 0xFFFF0000);
    const auto group = DisplayFactory::createContainer();
    const auto control = ColorControl::create({50, 0, 100, 100}, 0x0000FF);
    group->add(control);
    display_->add(red);
    display_->add(group);
    EXPECT_EQ(pixel(75, 50), 0x0000FFU);
    EXPECT_EQ(pixel(180, 50), 0U);
    EXPECT_EQ(control->getLayer()->getDisplay(), display_) << "every sublayer gets the display";
    EXPECT_TRUE(display_->remove(group));
    EXPECT_FALSE(display_->remove(nullptr));
    EXPECT_FALSE(display_->remove(rect(0, 0, 1, 1, 0)));
    EXPECT_EQ(control->getLayer()->getDisplay(), nullptr);
    EXPECT_EQ(pixel(75, 50), shown(0xFF0000));
    display_->removeAll();
    EXPECT_EQ(pixel(75, 50), 0U);
    display_->add(nullptr);
    Display::reset();
    EXPECT_NE(Display::instance(), display_) << "the old display belongs to its owners";
}

TEST_F(DisplayTest, ALayerWithoutAViewIsAddedAndRemovedSilently) {
    const auto object = rect(0, 0, 10, 10, 0xFFFF0000);
    object->extractIntoLayer(std::make_shared<native::BitmapLayer>());  // not initialized
    display_->add(object);
    EXPECT_TRUE(display_->remove(object));
}

TEST_F(DisplayTest, ListenersGetTheSizeAndTheWindowDeterminesTheScale) {
    struct SizeListener : FrameChangedEvent::listener_type {
        void operator()(const std::shared_ptr<Display>&, const FrameChangedEvent& event) override {
            size = event.frame;
        }
        geometry::Size<double> size;
    };
    const auto listener = std::make_shared<SizeListener>();
    display_->addListener<FrameChangedEvent>(listener);
    display_->frameChanged({30, 40});
    EXPECT_EQ(listener->size, geometry::Size<double>(30, 40));
    display_->frameChanged();
    EXPECT_EQ(listener->size, geometry::Size<double>(kWidth, kHeight));
    window_.setBackingScaleFactor(2);
    EXPECT_EQ(display_->getScaleFactor(), 2);
    window_.setContentView(nullptr);
    EXPECT_EQ(display_->getScaleFactor(), 1);
}

TEST_F(DisplayTest, AWindowThatTheApplicationKeepsIsNoneAfterTheDisplay) {
    const auto window = display_->getWindow();
    EXPECT_TRUE(window->setTitle("shown"));
    EXPECT_EQ(window_.windowHost().title(), "shown");
    window_.setContentView(nullptr);
    EXPECT_FALSE(window->setTitle("without a window"));
    display_->setFocus(rect(0, 0, 1, 1, 0));
    window_.setContentView(view_);
    EXPECT_TRUE(window->setTitle("shown again"));
    Display::reset();
    display_ = Display::instance();
    EXPECT_FALSE(window->setTitle("after the display"));
    EXPECT_EQ(window_.windowHost().title(), "shown again");
}

TEST_F(DisplayTest, AScrollContainerClipsItsChildrenToItsBounds) {
    const auto group = DisplayFactory::createContainer();
    const auto scroll =
        DisplayFactory::createScrollContainer(graphics::ScrollContainer::Type::Vertical, true);
    EXPECT_TRUE(scroll->ownsLayer());
    const auto clip = DisplayFactory::createClipContainer(true);
    EXPECT_TRUE(clip->ownsLayer());
    EXPECT_FALSE(clip->as<graphics::ScrollContainer>()->isPaging());
    scroll->setBounds({40, 30, 50, 40});
    scroll->add(rect(0, 0, 200, 150, 0xFF0000FF));
    group->add(scroll);
    display_->add(group);
    EXPECT_EQ(pixel(41, 31), shown(0x0000FF));
    EXPECT_EQ(pixel(38, 50), 0u);
    EXPECT_EQ(pixel(92, 72), 0u);

    // A translation moves the content and not the bounds.
    scroll->setTranslate(30, 0);
    EXPECT_EQ(pixel(41, 31), shown(0x0000FF));
    scroll->setTranslate(60, 0);
    EXPECT_EQ(pixel(50, 50), 0u);
    EXPECT_EQ(pixel(70, 50), shown(0x0000FF));
}

TEST_F(DisplayTest, AnInputTextIsATextFieldOfTheDesktop) {
    const auto input = DisplayFactory::createInputText(true, false, 20);
    EXPECT_TRUE(input->isMultiline());
    EXPECT_TRUE(input->isEditable());
    EXPECT_FALSE(input->isSecure());
    EXPECT_EQ(input->getMaximumLength(), 20);
    const auto field = std::dynamic_pointer_cast<platform::NSTextField>(viewOf(input));
    ASSERT_NE(field, nullptr);
    input->setContent("typed");
    EXPECT_EQ(field->stringValue(), "typed");
    field->setStringValue("by the user");
    EXPECT_EQ(input->getContent(), "by the user");
    input->setBounds({10, 20, 100, 30});
    display_->add(input);
    EXPECT_EQ(field->frame(), (platform::CGRect{{10, 20}, {100, 30}}));
}

namespace {

using graphics::InputText;

// Writes down what a text reports.
struct InputListener : InputText::ChangeEvent::listener_type,
                       InputText::CommitEvent::listener_type,
                       InputText::FocusEvent::listener_type {
    void operator()(const std::shared_ptr<DisplayObject>& object,
                    const InputText::ChangeEvent&) override {
        log += "changed to " + std::dynamic_pointer_cast<InputText>(object)->getContent() + ", ";
        if (throws) {
            throw std::runtime_error("in a listener");
        }
    }
    void operator()(const std::shared_ptr<DisplayObject>&, const InputText::CommitEvent&) override {
        log += "committed, ";
    }
    void operator()(const std::shared_ptr<DisplayObject>&,
                    const InputText::FocusEvent& event) override {
        log += event.isFocused ? "focused, " : "left, ";
    }
    std::string log;
    bool throws = false;
};

}  // namespace

TEST_F(DisplayTest, AnInputTextReportsWhatTheUserDoes) {
    const auto input = DisplayFactory::createInputText(false, false, 6);
    const auto listener = std::make_shared<InputListener>();
    input->addListener<InputText::ChangeEvent>(listener);
    input->addListener<InputText::CommitEvent>(listener);
    input->addListener<InputText::FocusEvent>(listener);
    input->setBounds({10, 10, 60, 20});
    EXPECT_FALSE(input->focus());  // it is not on the display
    display_->add(input);
    input->setContent("abc");
    EXPECT_TRUE(input->focus());
    const auto enter = [&](const std::string& key, const std::string& text) {
        platform::NSEvent event;
        event.type = platform::NSEventType::KeyDown;
        event.key = key;
        event.characters = text;
        viewOf(input)->window()->sendEvent(event);
    };
    enter("", "de");
    enter("Return", "");
    listener->throws = true;
    enter("", "fgh");
    input->unfocus();
    EXPECT_EQ(listener->log, "focused, changed to abcde, committed, changed to abcdef, left, ");
    // Bad input is refused or clamped.
    ::testing::internal::CaptureStderr();
    input->setTextSize(std::nanf(""));
    input->setMaximumLength(-1);
    input->setSelection({2, 1000});
    const std::string lines = ::testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::ranges::count(lines, '\n'), 3) << lines;
    EXPECT_EQ(input->getMaximumLength(), 6);
    EXPECT_EQ(input->getSelection().anchor, 2U);
    EXPECT_EQ(input->getSelection().caret, 6U);
    input->setMaximumLength(0);
    EXPECT_EQ(input->getMaximumLength(), 0) << "no limit";
}

TEST_F(DisplayTest, TheFontOfAnInputTextFollowsItsScale) {
    const auto input = DisplayFactory::createInputText(false, false, 0);
    const auto field = std::dynamic_pointer_cast<platform::NSTextField>(viewOf(input));
    const auto group = DisplayFactory::createContainer();
    input->setBounds({10, 10, 60, 20});
    input->setTextSize(10);
    group->add(input);
    display_->add(group);
    EXPECT_EQ(field->style().fontSize, 10);
    group->setScale(2, 3);
    EXPECT_EQ(field->style().fontSize, 30);
    input->setTextSize(20);
    EXPECT_EQ(field->style().fontSize, 60);
    group->setMatrix(0, 2, 0, -2, 0, 50);  // turned by a quarter
    EXPECT_EQ(field->style().fontSize, 40);
    // A secret has one line.
    EXPECT_FALSE(DisplayFactory::createInputText(true, true, 0)->isMultiline());
}

TEST_F(DisplayTest, LoadsTheFirstFontOfEachNameAndContinuesAfterFailures) {
    namespace fs = std::filesystem;
    const tests::TemporaryFolder temporary;
    const fs::path& folder = temporary.path();
    const std::string failure =
        "Failed to load font from file '" + (folder / "a/x.ttf").string() + "'\n";
    const auto write = [&](const char* name) { std::ofstream(folder / name) << "no font"; };
    const auto put = [&](const char* name, const char* font) {
        fs::copy_file(fs::path(ORVANE_TEST_FONTS) / font, folder / name);
    };
    // What is logged, without time stamps.
    const auto logOfLoading = [&](const fs::path& from) {
        testing::internal::CaptureStderr();
        display_->loadFonts(from.string());
        return std::regex_replace(testing::internal::GetCapturedStderr(),
                                  std::regex("[^\n]*(Failed)"), "$1");
    };
    fs::create_directory(folder / "a");
    fs::create_directory(folder / "b");
    fs::create_directory(folder / "z.ttf");  // cannot be read: skipped silently
    write("a/x.ttf");
    put("b/x.ttf", "DejaVuSerif.ttf");  // has the name of an earlier file: skipped
    put("b/y.ttf", "NotoColorEmoji-Subset.ttf");
    write("b/other.TTF");  // neither a font nor the name of a font file
    write("b/notes.txt");

    EXPECT_EQ(logOfLoading(folder), failure);
    EXPECT_EQ(platform::CTFont::createWithName("NotoColorEmoji-Subset", 12)->postScriptName(),
              "NotoColorEmoji-Subset");
    EXPECT_EQ(logOfLoading(folder),
              failure +
                  "Failed to load font: The font 'NotoColorEmoji-Subset' is already "
                  "registered.\n");
    EXPECT_EQ(logOfLoading("/none"), "");
}

}  // namespace
}  // namespace orvane::display
