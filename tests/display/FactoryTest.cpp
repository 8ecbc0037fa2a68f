#include <filesystem>
#include <fstream>

#include "orvane/display/native/BitmapLayer.h"
#include "platform/appkit/NSTextField.h"
#include "platform/coretext/CTFont.h"
#include "tests/native/Stage.h"

namespace orvane::display {
namespace {

class FactoryTest : public Stage {};

TEST_F(FactoryTest, CreatesEachKindOwnedByASharedPointer) {
    const std::pair<std::shared_ptr<DisplayObject>, const char*> objects[] = {
        {DisplayFactory::createContainer(), "QuartzContainer"},
        {DisplayFactory::createScrollContainer(graphics::ScrollContainer::Type::Vertical, true),
         "UIScrollContainer"},
        {DisplayFactory::createClipContainer(true), "UIScrollContainer"},
        {DisplayFactory::createClipContainer(false), "QuartzClipContainer"},
        {DisplayFactory::createRect(), "QuartzRect"},
        {DisplayFactory::createCircle(), "QuartzCircle"},
        {DisplayFactory::createEllipse(), "QuartzEllipse"},
        {DisplayFactory::createLine(), "QuartzLine"},
        {DisplayFactory::createPolyline(), "QuartzPolyline"},
        {DisplayFactory::createPath(), "QuartzPath"},
        {DisplayFactory::createText(true), "QuartzText"},
        {DisplayFactory::createText(false), "QuartzText"},
        {DisplayFactory::createAttributedText(), "QuartzAttributedText"},
        {DisplayFactory::createInputText(false, false, 0), "UIInputText"},
        {DisplayFactory::createImage(), "QuartzImage"},
    };
    for (const auto& [object, description] : objects) {
        EXPECT_EQ(object->getDescription(), description);
        EXPECT_EQ(object->shared_from_this(), object);
        const bool native = std::string_view(description).starts_with("UI");
        EXPECT_EQ(object->ownsLayer(), native) << description;
        EXPECT_EQ(object->getLayer() != nullptr, native) << description;
    }
    EXPECT_TRUE(DisplayFactory::createLayer<native::BitmapLayer>()->getLayerHandler());
}

TEST_F(FactoryTest, AScrollContainerClipsItsChildrenToItsBounds) {
    const auto group = DisplayFactory::createContainer();
    const auto scroll = DisplayFactory::createClipContainer(true);
    scroll->setBounds({40, 30, 50, 40});
    scroll->add(rect(0, 0, 200, 150, 0xFF0000FF));
    group->add(scroll);
    display_->add(group);
    EXPECT_EQ(pixel(41, 31), shown(0x0000FF));
    EXPECT_EQ(pixel(88, 68), shown(0x0000FF));
    EXPECT_EQ(pixel(38, 50), 0u);
    EXPECT_EQ(pixel(92, 50), 0u);
    EXPECT_EQ(pixel(60, 72), 0u);

    // A translation moves the content and not the bounds.
    scroll->setTranslate(30, 0);
    EXPECT_EQ(pixel(41, 31), shown(0x0000FF));
    scroll->setTranslate(60, 0);
    EXPECT_EQ(pixel(50, 50), 0u);
    EXPECT_EQ(pixel(70, 50), shown(0x0000FF));
}

TEST_F(FactoryTest, AnInputTextIsATextFieldOfTheDesktop) {
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

TEST_F(FactoryTest, LoadsTheFirstFontOfEachNameAndContinuesAfterFailures) {
    namespace fs = std::filesystem;
    const fs::path folder = fs::path(testing::TempDir()) / "orvane-load-fonts-test";
    const std::string failure =
        "Failed to load font from file '" + (folder / "a/x.ttf").string() + "'";
    const auto write = [&](const char* name) { std::ofstream(folder / name) << "no font"; };
    const auto put = [&](const char* name, const char* font) {
        fs::copy_file(fs::path(ORVANE_TEST_FONTS) / font, folder / name);
    };
    // The logged lines without their time stamps.
    using Lines = std::vector<std::string>;
    const auto linesOfLoading = [&](const fs::path& from) {
        testing::internal::CaptureStderr();
        display_->loadFonts(from.string());
        std::istringstream log(testing::internal::GetCapturedStderr());
        Lines lines;
        for (std::string line; std::getline(log, line);) {
            lines.push_back(line.substr(std::min(line.size(), line.find("Failed"))));
        }
        return lines;
    };
    fs::create_directories(folder / "a");
    fs::create_directories(folder / "b");
    fs::create_directory(folder / "z.ttf");  // cannot be read: skipped silently
    write("a/x.ttf");
    put("b/x.ttf", "DejaVuSerif.ttf");  // has the name of an earlier file: skipped
    put("b/y.ttf", "NotoColorEmoji-Subset.ttf");
    write("b/other.TTF");  // neither a font nor the name of a font file
    write("b/notes.txt");

    EXPECT_EQ(linesOfLoading(folder), Lines{failure});
    EXPECT_EQ(platform::CTFont::createWithName("NotoColorEmoji-Subset", 12)->postScriptName(),
              "NotoColorEmoji-Subset");
    EXPECT_EQ(linesOfLoading(folder),
              (Lines{failure,
                     "Failed to load font: The font 'NotoColorEmoji-Subset' is already "
                     "registered."}));
    EXPECT_EQ(linesOfLoading(folder / "none"), Lines());
    fs::remove_all(folder);
}

}  // namespace
}  // namespace orvane::display
