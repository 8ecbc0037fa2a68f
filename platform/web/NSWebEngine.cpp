#include "platform/web/NSWebEngine.h"

namespace orvane::platform {

NSWebEngine::~NSWebEngine() = default;

}  // namespace orvane::platform
