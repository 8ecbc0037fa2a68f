#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "orvane/display/animation/Animatable.h"
#include "orvane/display/animation/ValueAnimation.h"
#include "platform/appkit/NSView.h"
#include "platform/quartzcore/CALayer.h"
#include "platform/quartzcore/CAMediaTime.h"

namespace orvane::display::animation {

// A target with a view of its own, or with none.
class Target : public Animatable {
public:
    explicit Target(std::shared_ptr<platform::NSView> view) : view_(std::move(view)) {}
    std::shared_ptr<platform::NSView> getAnimatableHandler() const override { return view_; }

private:
    std::shared_ptr<platform::NSView> view_;
};

// One target of 100 x 50 points at 30, 40, on a clock that stands until it is advanced.
class AnimationTest : public testing::Test {
protected:
    AnimationTest() { view_->setFrame({{30, 40}, {100, 50}}); }
    ~AnimationTest() override {
        // Nothing may report to a test that is over. An end can end another of its key.
        view_->layer()->removeAllAnimations();
        clock_.advanceBy(0);
        clock_.advanceBy(0);
    }

    std::shared_ptr<ValueAnimation> makeAnimation(AttributeName attribute,
                                                  const std::vector<float>& values,
                                                  const std::string& key = "key") {
        auto animation = std::make_shared<ValueAnimation>(key, attribute, values);
        animation->setAnimatable(target_);
        animation->setDuration(1);
        animation->setCompletionCallback([this, key] { log_ += key + " "; });
        return animation;
    }

    platform::CALayerPresentation shown() const {
        return view_->layer()->presentation(platform::CACurrentMediaTime());
    }
    platform::CGAffineTransform shownTransform() const {
        return shown().transform.affineTransform();
    }

    platform::CAVirtualClock clock_{100};
    std::shared_ptr<platform::NSView> view_ = std::make_shared<platform::NSView>();
    std::shared_ptr<Target> target_ = std::make_shared<Target>(view_);
    std::string log_;  // the keys of the animations that completed, in order
};

}  // namespace orvane::display::animation
