#include "orvane/display/animation/ValueAnimation.h"

#include <cstddef>
#include <limits>
#include <utility>

#include "orvane/display/animation/Animatable.h"
#include "orvane/display/animation/AnimationTransaction.h"
#include "orvane/display/animation/moveObjects.h"
#include "orvane/display/geometry/Matrix.h"
#include "orvane/thread/dispatch.h"
#include "platform/appkit/NSView.h"
#include "platform/foundation/NSLog.h"
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

// The transformation of a layer on which nothing but this key frame has an effect.
CATransform3D transformOf(AttributeName attributeName, const float* keyFrame) {
    switch (attributeName) {
        case AttributeName::TranslationX:
            return CATransform3D::makeTranslation(keyFrame[0], 0, 0);
        case AttributeName::TranslationY:
            return CATransform3D::makeTranslation(0, keyFrame[0], 0);
        case AttributeName::Translation:
            // The z translation of 1 has no visible effect.
            return CATransform3D::makeTranslation(keyFrame[0], keyFrame[1], 1.0);
        case AttributeName::Rotation:
            return platform::CATransform3DIdentity.withRotation(keyFrame[0]);
        case AttributeName::Affine:
            return CATransform3D::makeAffineTransform(
                {keyFrame[0], keyFrame[1], keyFrame[2], keyFrame[3], keyFrame[4], keyFrame[5]});
        case AttributeName::Opacity:
            break;
    }
    return platform::CATransform3DIdentity;
}

// Whether times ascend within 0 to 1. NaN does not.
bool areKeyTimes(const std::vector<float>& times, std::size_t count) {
    float previous = 0;
    for (const float time : times) {
        if (!(time >= previous && time <= 1)) {
            return false;
        }
        previous = time;
    }
    return times.size() == count;
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
    if (endState_ == EndState::Keep) {
        stop(StopAt::End);
    }
    const std::shared_ptr<NSView> handler = getAnimatableHandler();
    if (!handler) {
        return;
    }
    const std::shared_ptr<ValueAnimation> self = as<ValueAnimation>();
    const std::shared_ptr<platform::CAAnimation> animation = createNativeAnimation();
    if (!animation) {
        return;
    }
    const auto run = std::make_shared<Run>(Run{getAnimatable()});
    run_ = run;
    const AnimationTransaction transaction(
        [handler, self, run] { self->complete(*handler, *run); });
    handler->layer()->addAnimation(*animation, getKey());
}

void ValueAnimation::stop(StopAt where) {
    const std::shared_ptr<Run> run = run_.lock();
    const std::shared_ptr<NSView> handler = run ? run->target->getAnimatableHandler() : nullptr;
    if (!handler || run->isSettled) {
        return;
    }
    run->isSettled = true;
    keep(*run->target,
         where == StopAt::End ? lastKeyFrame() : run->target->getPresentationValue(attributeName_));
    handler->layer()->removeAnimationForKey(getKey());
}

void ValueAnimation::complete(const NSView& handler, Run& run) {
    // The callback may stop this animation or run it again, which must not end the run twice.
    isSettled_ = std::exchange(run.isSettled, true);
    if (!isSettled_ && endState_ == EndState::Restore) {
        completeAndRemoveKey(handler, shared_from_this());
    } else {
        // The layer has dropped the animation. Another run may have the key by now, and stays.
        thread::dispatch_main([this] { onCompleted(); });
    }
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
    setPace(*animation);
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
    if (!keyFrames.empty() && endState_ == EndState::Restore) {
        // Bridges the time between the platform's end of the animation and onCompleted, so that the
        // layer does not jump back before it is restored.
        layer.setTransform(keyFrames.back());
    }
    animation.setValues(std::move(keyFrames));
}

void ValueAnimation::setPace(CAKeyframeAnimation& animation) const {
    if (easing_) {
        animation.setTimingFunction(*easing_);
    }
    animation.setTimingFunctions({keyFrameEasings_.begin(), keyFrameEasings_.end()});
    if (keyTimes_.empty()) {
        return;
    }
    if (areKeyTimes(keyTimes_, values_.size() / strideOf(attributeName_))) {
        animation.setKeyTimes({keyTimes_.begin(), keyTimes_.end()});
    } else {
        platform::NSLog(
            "The animation '%s' has key times that do not fit: they must ascend from 0 "
            "to 1, one for each key frame.",
            getKey().c_str());
    }
}

void ValueAnimation::setSpring(const Spring& spring) {
    easing_ = Easing::spring(spring);
    setDuration(static_cast<float>(spring.getSettlingTime()));
}

std::vector<float> ValueAnimation::lastKeyFrame() const {
    const std::size_t stride = strideOf(attributeName_);
    const auto end =
        values_.begin() + static_cast<std::ptrdiff_t>(values_.size() / stride * stride);
    return end == values_.begin()
               ? std::vector<float>()
               : std::vector<float>(end - static_cast<std::ptrdiff_t>(stride), end);
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
    if (std::exchange(isSettled_, false)) {
        // stop() has done it.
    } else if (endState_ == EndState::Restore) {
        restoreNativeLayer();
    } else if (const std::shared_ptr<Animatable> target = getAnimatable()) {
        keep(*target, lastKeyFrame());
    }
    Animation::onCompleted();
}

void ValueAnimation::restoreNativeLayer() {
    const std::shared_ptr<NSView> handler = getAnimatableHandler();
    if (!handler) {
        return;
    }
    CALayer& layer = *handler->layer();
    if (attributeName_ == AttributeName::Opacity) {
        // Not the opacity of the view before: applications expect a faded layer to show again.
        layer.setOpacity(getAnimatable()->getRestingOpacity());
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

void ValueAnimation::keep(Animatable& target, const std::vector<float>& keyFrame) const {
    const std::shared_ptr<NSView> handler = target.getAnimatableHandler();
    if (!handler) {
        return;
    }
    CALayer& layer = *handler->layer();
    platform::CALayerPresentation shown{layer.position(), layer.anchorPoint(), {}};
    const geometry::Matrix rest(layer.affineTransform(shown));
    if (!keyFrame.empty()) {
        shown.transform = transformOf(attributeName_, keyFrame.data());
    }
    const geometry::Matrix moved(layer.affineTransform(shown));

    if (anchorPointX_ || anchorPointY_) {
        // The layer's corner stays where it is: the view may have moved since the run began.
        const platform::CGSize size = layer.size();
        const platform::CGPoint anchor{anchorPointX_ ? savedAnchorPoint_.x : shown.anchorPoint.x,
                                       anchorPointY_ ? savedAnchorPoint_.y : shown.anchorPoint.y};
        layer.setPosition({shown.position.x + (anchor.x - shown.anchorPoint.x) * size.width,
                           shown.position.y + (anchor.y - shown.anchorPoint.y) * size.height});
        layer.setAnchorPoint(anchor);
    }
    layer.setTransform(platform::CATransform3DIdentity);
    if (keyFrame.empty()) {
        return;
    }
    if (attributeName_ == AttributeName::Opacity) {
        layer.setOpacity(keyFrame[0]);
    } else {
        moveObjects(target, rest.inverse() * moved);
    }
}

}  // namespace orvane::display::animation
