#pragma once

namespace orvane::platform {

// The offset of scrolled content along one axis, and its motion as a function of time. Lengths and
// offsets are in points, times in seconds. An offset is always from 0 to limit(), and every number
// that goes in must be finite.
//
// Two kinds of motion exist. A glide ends at a given offset: the response of a critically damped
// spring, which takes over the velocity of the motion that it replaces, so that a target can change
// at any time without a jerk. A fling has a given velocity and is slowed down by friction.
class NSScrollAxis {
public:
    // How quickly a glide covers most of its way.
    enum class Pace {
        Quick,   // about 0.15 s, for a notch of a wheel or a key
        Gentle,  // about 0.3 s, for an offset that a program sets, and for pages
    };

    // The extent of the content and the extent of what is visible of it. Stops a motion that leads
    // out of the new limits there. Returns whether the offset has changed.
    bool setLengths(double content, double visible);
    // An axis that is not enabled has the limit 0. Enabled at first. Returns whether the offset has
    // changed.
    bool setEnabled(bool enabled);

    double offset() const { return offset_; }
    // The largest offset.
    double limit() const;
    double content() const { return content_; }
    double visible() const { return visible_; }
    // Where the motion will end; the offset when there is none.
    double target() const;
    // Whether the offset could change by an amount with this sign.
    bool canMove(double delta) const;

    // Stops the motion and sets the offset, within the limits.
    void jumpTo(double offset);
    // Starts a glide to an offset, within the limits. `time` is the present.
    void glideTo(double offset, double time, Pace pace);
    // Starts a fling, in points per second.
    void fling(double velocity, double time);
    // Stops the motion where it is.
    void stop();
    // Adds `delta` to the content's length, the offset and the motion: the same content stays
    // visible after `delta` points of it were inserted before it.
    void insertBefore(double delta);

    // Computes the offset at a time, which is not before the one at which the motion started.
    void step(double time);
    bool isMoving() const { return motion_ != Motion::None; }
    // Whether a fling is going on.
    bool isFlung() const { return motion_ == Motion::Fling; }

    // The offset of a page: pages are as long as what is visible, except for the last one.
    double pageOffset(double page) const;
    // The number of the page that is nearest to an offset.
    double pageAt(double offset) const;

private:
    enum class Motion { None, Glide, Fling };

    double velocityAt(double time) const;
    double clamped(double offset) const;

    double content_ = 0;
    double visible_ = 0;
    bool enabled_ = true;
    double offset_ = 0;

    Motion motion_ = Motion::None;
    double start_ = 0;     // the time at which the motion started
    double origin_ = 0;    // of a fling: the offset at the start
    double velocity_ = 0;  // at the start
    double target_ = 0;    // of a glide
    double rate_ = 0;      // of a glide: the natural frequency of the spring, per second
    double distance_ = 0;  // of a glide: the way from the target at the start
};

}  // namespace orvane::platform
