#include <gtest/gtest.h>

#include "orvane/orvane.h"
#include "tests/graphics/Recording.h"

namespace orvane::display::graphics {
namespace {

const Calls kFillAndStroke{"setRGBFillColor(0 0 0 1)", "setLineWidth(0)",
                           "setRGBStrokeColor(0 0 0 1)"};

TEST(ContainerPainting, ChildrenNestInTheBracketAndTheClipComesBeforeTheTransformation) {
    const auto clip = DisplayFactory::createClipContainer(false);
    const auto group = DisplayFactory::createContainer();
    const auto rect = DisplayFactory::createRect();
    clip->setBounds({5, 5, 30, 20});
    clip->setTranslate(3, 4);
    group->setMatrix(0, -1, 10, 1, 0, 0);
    rect->set(0, 0, 10, 10);
    clip->add(group);
    group->add(rect);

    EXPECT_EQ(paint(*clip),
              (Calls{"saveGState()", "clipToRect(5 5 30x20)", "concatCTM(1 0 0 1 3 4)",  //
                     "saveGState()", "concatCTM(0 1 -1 0 10 0)",                         //
                     "saveGState()", "concatCTM(1 0 0 1 0 0)", kFillAndStroke[0], kFillAndStroke[1],
                     kFillAndStroke[2], "addPath(M 0 0 L 10 0 L 10 10 L 0 10 Z)", "drawPath(3)",
                     "restoreGState()", "restoreGState()", "restoreGState()"}));
    EXPECT_EQ(clip->getValidFrame(), geometry::Rect<double>(5, 5, 30, 20));
}

TEST(ContainerPainting, OutsideAPassNothingIsPaintedAndNothingBreaks) {
    const auto clip = DisplayFactory::createClipContainer(false);
    clip->setBounds({0, 0, 100, 100});
    const auto rect = DisplayFactory::createRect();
    rect->set(0, 0, 10, 10);
    LinearGradient gradient;
    gradient.addColor(0xFFFF0000);
    rect->setFillColor(gradient);
    const auto line = DisplayFactory::createLine();
    line->set(0, 0, 10, 10);
    clip->add(rect);
    clip->add(line);

    ASSERT_EQ(GetCurrentCanvas(), nullptr);
    clip->validate({0, 0, 100, 100});
    EXPECT_EQ(line->getValidFrame(), geometry::Rect<double>(0, 0, 10, 10));
    EXPECT_EQ(paint(*clip).back(), "restoreGState()");
}

TEST(DisplayFactory, GivesEachKindUnderItsName) {
    const std::pair<std::shared_ptr<DisplayObject>, const char*> kinds[] = {
        {DisplayFactory::createContainer(), "QuartzContainer"},
        {DisplayFactory::createClipContainer(false), "QuartzClipContainer"},
        {DisplayFactory::createRect(), "QuartzRect"},
        {DisplayFactory::createCircle(), "QuartzCircle"},
        {DisplayFactory::createEllipse(), "QuartzEllipse"},
        {DisplayFactory::createLine(), "QuartzLine"},
        {DisplayFactory::createPolyline(), "QuartzPolyline"},
        {DisplayFactory::createPath(), "QuartzPath"},
    };
    for (const auto& [object, description] : kinds) {
        EXPECT_EQ(object->getDescription(), description);
        EXPECT_EQ(object->shared_from_this(), object);
        EXPECT_EQ(object->getLayer(), nullptr);
    }
    EXPECT_TRUE(kinds[1].first->as<ClipContainer>());
}

}  // namespace
}  // namespace orvane::display::graphics
