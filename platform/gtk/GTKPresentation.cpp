#include "platform/gtk/GTKPresentation.h"

#include "platform/gtk/GTKPicturePresentation.h"
#include "platform/gtk/GTKRenderer.h"
#include "platform/gtk/GTKTexturePresentation.h"

namespace orvane::platform {

std::unique_ptr<GTKPresentation> GTKPresentation::create(GTKRendererKind kind, GTKRoot& root) {
    if (kind == GTKRendererKind::Processor) {
        return std::make_unique<GTKPicturePresentation>(root);
    }
    return std::make_unique<GTKTexturePresentation>(root);
}

}  // namespace orvane::platform
