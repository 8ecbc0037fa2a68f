#pragma once

#include <sys/resource.h>
#include <unistd.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "bench/Measure.h"
#include "bench/list/Rows.h"

// The scenes that all sides show in a window of kWidth x kHeight, and what is measured of them: CPU
// time a frame and frames a second.
namespace bench {

// A refresh of 60 Hz in whole milliseconds; not less, so that a display can show every tick.
inline constexpr int kTickMilliseconds = 17;
inline constexpr double kWarmUp = 1;    // seconds
inline constexpr double kMeasured = 3;  // seconds

enum class Pointer { Press, Drag, Release };

// A window of one side of the comparison.
class WindowLoop {
public:
    virtual ~WindowLoop() = default;

    // Runs the main loop, with the window open, and calls `tick` every kTickMilliseconds.
    virtual void run(double seconds, const std::function<void()>& tick) = 0;
    // Since the window was opened.
    virtual int framesShown() const = 0;
};

// A window with the rows of bench/list/Rows.h.
class WindowList : public WindowLoop {
public:
    // Shows the rows that are so many points further down.
    virtual void scrollBy(int points) = 0;
};

// A window with shapes.
class WindowStage : public WindowLoop {
public:
    // Adds a square or a circle of kSide units in turn, filled with shapeColor(i) and stroked in
    // black, at place(i).
    virtual void addShape(int i) = 0;
    // Moves the shape that was added as the i-th.
    virtual void move(int i, const Place& place) = 0;
    // Adds such a shape with a layer of its own, which turns about its middle, twice in kPass.
    virtual void addTurning(int i) = 0;
    // Turns these layers, where they do not turn on their own.
    virtual void turn(double radians) = 0;
    // Lets the user drag the shape that was added as the i-th.
    virtual void makeDraggable(int i) = 0;
    virtual void sendPointer(Pointer what, const Place& place) = 0;
};

inline double cpuMilliseconds() {
    timespec time;
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

inline double wallMilliseconds() {
    timespec time;
    clock_gettime(CLOCK_REALTIME, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

// CPU time of the X server whose process number is in the environment. Zero without one.
inline double serverMilliseconds() {
    const char* const process = std::getenv("BENCH_SERVER");
    std::ifstream file(process != nullptr ? "/proc/" + std::string(process) + "/stat" : "");
    std::string word;
    double ticks = 0;
    for (int field = 1; field <= 15 && file >> word; ++field) {
        if (field >= 14) {  // in user mode, in the kernel
            ticks += std::atof(word.c_str());
        }
    }
    return ticks * 1000 / static_cast<double>(sysconf(_SC_CLK_TCK));
}

// Measures frames that `tick` causes.
inline void measureFrames(WindowLoop& stage, const std::string& scene,
                          const std::function<void()>& tick) {
    stage.run(kWarmUp, tick);
    const int framesBefore = stage.framesShown();
    const double cpuBefore = cpuMilliseconds();
    const double serverBefore = serverMilliseconds();
    const double wallBefore = wallMilliseconds();
    stage.run(kMeasured, tick);
    const double frames = std::max(1, stage.framesShown() - framesBefore);
    const double cpu = cpuMilliseconds() - cpuBefore;
    report(scene, "cpu_ms_a_frame", cpu / frames);
    report(scene, "with_server_ms_a_frame", (cpu + serverMilliseconds() - serverBefore) / frames);
    report(scene, "frames_a_second", frames * 1e3 / (wallMilliseconds() - wallBefore));
}

inline void measureMoving(WindowStage& stage, int count, int moving) {
    for (int i = 0; i < count; ++i) {
        stage.addShape(i);
    }
    const std::vector<int> moved = movers(count, moving);
    int frame = 0;
    measureFrames(stage, std::to_string(moving) + "_of_" + std::to_string(count) + "_move", [&] {
        ++frame;
        for (const int i : moved) {
            stage.move(i, movedPlace(i, frame));
        }
    });
}

// `rival` is what the rows are compared with: "view" or "delegate".
inline void measureScrolling(WindowList& list, const std::string& rival) {
    measureFrames(list, "list_" + rival + "_window", [&list] { list.scrollBy(kNotch); });
}

inline constexpr double kPass = 2;  // seconds of a turn

inline void measureTurning(WindowStage& stage, int count) {
    for (int i = 0; i < count; ++i) {
        stage.addTurning(i);
    }
    const double start = wallMilliseconds();
    measureFrames(stage, std::to_string(count) + "_turn",
                  [&] { stage.turn((wallMilliseconds() - start) / 1e3 * 2 * M_PI / kPass); });
}

inline void measureDragging(WindowStage& stage, int count) {
    for (int i = 0; i < count; ++i) {
        stage.addShape(i);
    }
    int dragged = count - 1;
    while (place(dragged).x < 300 || place(dragged).x > 1500 || place(dragged).y < 300 ||
           place(dragged).y > 800) {
        --dragged;
    }
    stage.makeDraggable(dragged);
    const Place start = {place(dragged).x + kSide / 2, place(dragged).y + kSide / 2};
    stage.run(0.5, [] {});
    stage.sendPointer(Pointer::Press, start);
    int frame = 0;
    measureFrames(stage, "drag_over_" + std::to_string(count), [&] {
        ++frame;
        stage.sendPointer(Pointer::Drag, {start.x + 200 * std::sin(frame * 0.05),
                                          start.y + 200 * std::sin(frame * 0.07)});
    });
    stage.sendPointer(Pointer::Release, start);
}

inline void measureIdle(WindowStage& stage, int count) {
    for (int i = 0; i < count; ++i) {
        stage.addShape(i);
    }
    stage.run(kWarmUp, [] {});
    const double before = cpuMilliseconds();
    // One run of the loop, without ticks: those would be measured.
    stage.run(kMeasured, nullptr);
    report("idle", "cpu_percent", (cpuMilliseconds() - before) / kMeasured / 10);
}

// Reports what starting took, from the time in the environment (BENCH_START, nanoseconds) until
// now, when the first frame has been shown.
inline void reportStart() {
    const char* const start = std::getenv("BENCH_START");
    if (start != nullptr) {
        report("start", "wall_ms", wallMilliseconds() - std::atof(start) / 1e6);
    }
    report("start", "cpu_ms", cpuMilliseconds());
    std::ifstream file("/proc/self/statm");
    double pages = 0;
    file >> pages >> pages;  // the second is what is resident
    report("start", "resident_mb", pages * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1e6);
}

// Runs the scene that the command line names: move COUNT MOVING, turn COUNT, drag COUNT or idle
// COUNT.
inline void measureWindow(WindowStage& stage, int argc, char** argv) {
    const std::string scene = argc > 1 ? argv[1] : "move";
    const int count = argc > 2 ? std::atoi(argv[2]) : 1000;
    if (scene == "turn") {
        measureTurning(stage, count);
    } else if (scene == "drag") {
        measureDragging(stage, count);
    } else if (scene == "idle") {
        measureIdle(stage, count);
    } else {
        measureMoving(stage, count, argc > 3 ? std::atoi(argv[3]) : 1);
    }
}

}  // namespace bench
