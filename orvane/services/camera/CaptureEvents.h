#pragma once

#include <functional>
#include <string>
#include <unordered_map>

#include "orvane/services/CameraProvider.h"

namespace orvane::services {

// Whom a pipeline reports to, on the main thread only: what an application has passed is never
// touched by another thread.
struct CaptureEvents {
    CameraCapture::Observer observer;
    // By the numbers of the photos that were asked for.
    std::unordered_map<
        int, std::function<void(const std::string& bytes, const CameraCapture::Outcome& outcome)>>
        photos = {};
    std::function<void(const CameraCapture::Outcome& outcome)> recorded = {};
};

}  // namespace orvane::services
