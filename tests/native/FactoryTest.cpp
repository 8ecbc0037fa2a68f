#include <filesystem>
#include <fstream>

#include "platform/appkit/NSTextField.h"
#include "platform/coretext/CTFont.h"
#include "tests/native/Stage.h"

namespace orvane::display {
namespace {

class FactoryTest : public Stage {};

TEST_F(FactoryTest, EveryObjectIsOfItsKindAndCanBeShared) {
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
}

TEST_F(FactoryTest, AScrollContainerPaintsItsChildrenInsideItsBounds) {
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

    // What is inside can be moved, and the window stays where it is.
    scroll->setTranslate(30, 0);
    EXPECT_EQ(pixel(41, 31), shown(0x0000FF));
    scroll->setTranslate(60, 0);
    EXPECT_EQ(pixel(50, 50), 0u);
    EXPECT_EQ(pixel(70, 50), shown(0x0000FF));
}

TEST_F(FactoryTest, AnInputTextIsTheDesktopsTextField) {
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

TEST_F(FactoryTest, AStoreKeepsObjectsAlive) {
    std::weak_ptr<DisplayObject> kept;
    {
        DisplayObjectStore store;
        store.objects.push_back(DisplayFactory::createRect());
        kept = store.objects.front();
        EXPECT_FALSE(kept.expired());
    }
    EXPECT_TRUE(kept.expired());
}

class LoadFontsTest : public Stage {
protected:
    void SetUp() override {
        Stage::SetUp();
        std::filesystem::create_directories(folder_ / "a");
        std::filesystem::create_directories(folder_ / "b");
    }
    void TearDown() override {
        std::filesystem::remove_all(folder_);
        Stage::TearDown();
    }
    void put(const std::string& name, const std::string& font) {
        std::filesystem::copy_file(std::filesystem::path(ORVANE_TEST_FONTS) / font, folder_ / name);
    }
    void write(const std::string& name, const std::string& bytes) {
        std::ofstream(folder_ / name) << bytes;
    }
    // What the developer is told, without the time stamps.
    std::vector<std::string> linesOfLoading(const std::string& folder) {
        testing::internal::CaptureStderr();
        display_->loadFonts(folder);
        std::istringstream log(testing::internal::GetCapturedStderr());
        std::vector<std::string> lines;
        for (std::string line; std::getline(log, line);) {
            lines.push_back(line.substr(std::min(line.size(), line.find("Failed"))));
        }
        return lines;
    }

    const std::filesystem::path folder_ =
        std::filesystem::path(testing::TempDir()) / "orvane-load-fonts-test";
};

TEST_F(LoadFontsTest, TheWalkGoesOnPastWhatFailsAndTakesTheFirstOfANameOnly) {
    using Lines = std::vector<std::string>;
    write("a/x.ttf", "no font");
    put("b/x.ttf", "DejaVuSerif.ttf");  // never looked at
    put("b/y.ttf", "NotoColorEmoji-Subset.ttf");
    write("b/other.TTF", "no font and no name of one");
    write("b/notes.txt", "nor this");
    std::filesystem::create_directory(folder_ / "z.ttf");  // cannot be read: silence
    const std::string folder = folder_.string();
    EXPECT_EQ(linesOfLoading(folder),
              Lines{"Failed to load font from file '" + folder + "/a/x.ttf'"});
    EXPECT_EQ(platform::CTFont::createWithName("NotoColorEmoji-Subset", 12)->postScriptName(),
              "NotoColorEmoji-Subset");

    EXPECT_EQ(linesOfLoading(folder),
              (Lines{"Failed to load font from file '" + folder + "/a/x.ttf'",
                     "Failed to load font: The font 'NotoColorEmoji-Subset' is already "
                     "registered."}));
    EXPECT_EQ(linesOfLoading(folder + "/none"), Lines());
}

}  // namespace
}  // namespace orvane::display
