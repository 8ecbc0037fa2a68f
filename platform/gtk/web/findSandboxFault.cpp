#include "platform/gtk/web/findSandboxFault.h"

#include <glib.h>

#include <cstring>

namespace orvane::platform {

std::string findSandboxFault() {
    // WebKit's own way to do without.
    const char* const disabled = g_getenv("WEBKIT_DISABLE_SANDBOX_THIS_IS_DANGEROUS");
    if (disabled != nullptr && std::strcmp(disabled, "1") == 0) {
        return {};
    }
    // What WebKit asks of the sandbox: namespaces, and file systems mounted in them.
    const char* const command[] = {"bwrap", "--unshare-all", "--ro-bind", "/",    "/",    "--dev",
                                   "/dev",  "--proc",        "/proc",     "true", nullptr};
    char* output = nullptr;
    int status = 0;
    GError* error = nullptr;
    const bool isRun =
        g_spawn_sync(nullptr, const_cast<char**>(command), nullptr,
                     static_cast<GSpawnFlags>(G_SPAWN_SEARCH_PATH | G_SPAWN_STDOUT_TO_DEV_NULL),
                     nullptr, nullptr, nullptr, &output, &status, &error) != FALSE &&
        g_spawn_check_wait_status(status, &error) != FALSE;
    std::string fault;
    if (!isRun) {
        fault = output != nullptr && *output != '\0' ? g_strstrip(output) : error->message;
    }
    g_free(output);
    g_clear_error(&error);
    return fault;
}

}  // namespace orvane::platform
