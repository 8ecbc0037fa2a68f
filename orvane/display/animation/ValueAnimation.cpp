#include "orvane/display/animation/ValueAnimation.h"

#include <cstddef>
#include <limits>
#include <utility>

#include "orvane/display/animation/AnimationTransaction.h"
#include "platform/appkit/NSView.h"
#include "platform/quartzcore/CAKeyframeAnimation.h"
#include "platform/quartzcore/CALayer.h"
#include "platform/quartzcore/CAMediaTime.h"

namespace orvane::display::animation {

using geometry::Point;
using platform::CAKeyframeAnimation;
using platform::CALayer;
using platform::CATransform3D;
using platform::NSView;

namespace {

// The number of values in a key frame.
std::size_t strideOf(AttributeName attributeName) {
    switch (attributeName) {
        case AttributeName::Translation:
            return 2;
        case AttributeName::Affine:
            return 6;
        default:
            return 1;
    }
}

CATransform3D transformOf(AttributeName attributeName, const float* keyFrame) {
    if (attributeName == AttributeName::Translation) {
        // The z translation of 1 has no visible effect.
        return CATransform3D::makeTranslation(keyFrame[0], keyFrame[1], 1.0);
    }
    return CATransform3D::makeAffineTransform(
        {keyFrame[0], keyFrame[1], keyFrame[2], keyFrame[3], keyFrame[4], keyFrame[5]});
}

}  // namespace

std::string getKeyPath(AttributeName attributeName) {
    switch (attributeName) {
        case AttributeName::TranslationX:
            return "transform.translation.x";
        case AttributeName::TranslationY:
            return "transform.translation.y";
        case AttributeName::Opacity:
            return "opacity";
        case AttributeName::Translation:
        case AttributeName::Affine:
            return "transform";
        case AttributeName::Rotation:
            return "transform.rotation";
    }
    return "";
}

ValueAnimation::ValueAnimation(const std::string& key, AttributeName attributeName,
                               const std::vector<float>& values)
    : Animation(key), attributeName_(attributeName), values_(values) {}

ValueAnimation::~ValueAnimation() = default;

void ValueAnimation::run() {
    const std::shared_ptr<NSView> handler = getAnimatableHandler();
    if (!handler) {
        return;
    }
    const std::shared_ptr<ValueAnimation> self = as<ValueAnimation>();
    const std::shared_ptr<platform::CAAnimation> animation = createNativeAnimation();
    if (!animation) {
        return;
    }
    const AnimationTransaction transaction(handler, self);
    handler->layer()->addAnimation(*animation, getKey());
}

std::shared_ptr<platform::CAAnimation> ValueAnimation::createNativeAnimation() {
    const std::shared_ptr<NSView> handler = getAnimatableHandler();
    if (!handler) {
        return nullptr;
    }
    auto animation = std::make_shared<CAKeyframeAnimation>(getKeyPath(attributeName_));
    animation->setDuration(getDuration());
    animation->setBeginTime(platform::CACurrentMediaTime() + getDelay());
    animation->setRepeatCount(getRepeatCount() < 0 ? std::numeric_limits<float>::infinity()
                                                   : static_cast<float>(getRepeatCount()));
    setKeyFrames(*animation, *handler->layer());
    placeAnchorPoint(*handler);
    return animation;
}

void ValueAnimation::setKeyFrames(CAKeyframeAnimation& animation, CALayer& layer) const {
    if (attributeName_ != AttributeName::Translation && attributeName_ != AttributeName::Affine) {
        animation.setValues(std::vector<double>(values_.begin(), values_.end()));
        return;
    }
    const std::size_t stride = strideOf(attributeName_);
    std::vector<CATransform3D> keyFrames(values_.size() / stride);
    for (std::size_t i = 0; i < keyFrames.size(); ++i) {
        keyFrames[i] = transformOf(attributeName_, &values_[i * stride]);
    }
    if (!keyFrames.empty()) {
        // Bridges the time between the platform's end of the animation and onCompleted, so that the
        // layer does not jump back before it is restored.
        layer.setTransform(keyFrames.back());
    }
    animation.setValues(std::move(keyFrames));
}

void ValueAnimation::placeAnchorPoint(const NSView& handler) {
    CALayer& layer = *handler.layer();
    platform::CGPoint position = layer.position();
    platform::CGPoint anchorPoint = layer.anchorPoint();
    // Saved at the start of every run: a run that begins while another one is in progress saves
    // what that one has set.
    savedPosition_ = Point<double>(position);
    savedAnchorPoint_ = Point<double>(anchorPoint);

    const platform::CGSize size = handler.bounds().size;
    if (anchorPointX_) {
        anchorPoint.x = *anchorPointX_;
        position.x += *anchorPointX_ * size.width;
    }
    if (anchorPointY_) {
        anchorPoint.y = *anchorPointY_;
        position.y += *anchorPointY_ * size.height;
    }
    layer.setPosition(position);
    layer.setAnchorPoint(anchorPoint);
}

void ValueAnimation::onCompleted() {
    restoreNativeLayer();
    Animation::onCompleted();
}

void ValueAnimation::restoreNativeLayer() {
    const std::shared_ptr<NSView> handler = getAnimatableHandler();
    if (!handler) {
        return;
    }
    CALayer& layer = *handler->layer();
    if (attributeName_ == AttributeName::Opacity) {
        // Always opaque, independent of the opacity before: applications expect a faded layer to
        // show again.
        layer.setOpacity(1.0);
    }
    if (anchorPointX_ || anchorPointY_) {
        platform::CGPoint position = layer.position();
        platform::CGPoint anchorPoint = layer.anchorPoint();
        if (anchorPointX_) {
            position.x = savedPosition_.x;
            anchorPoint.x = savedAnchorPoint_.x;
        }
        if (anchorPointY_) {
            position.y = savedPosition_.y;
            anchorPoint.y = savedAnchorPoint_.y;
        }
        layer.setPosition(position);
        layer.setAnchorPoint(anchorPoint);
    }
    layer.setTransform(platform::CATransform3DIdentity);
}

}  // namespace orvane::display::animation
