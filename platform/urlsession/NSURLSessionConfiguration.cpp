#include "platform/urlsession/NSURLSessionConfiguration.h"

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

#include "platform/urlsession/systemProxy.h"

namespace orvane::platform {

namespace {

std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? std::string() : value;
}

std::size_t descriptorLimit() {
    rlimit limit{};
    return getrlimit(RLIMIT_NOFILE, &limit) == 0 ? limit.rlim_cur : 256;
}

std::size_t physicalMemory() {
    const long pages = sysconf(_SC_PHYS_PAGES);
    const long pageSize = sysconf(_SC_PAGESIZE);
    return pages > 0 && pageSize > 0
               ? static_cast<std::size_t>(pages) * static_cast<std::size_t>(pageSize)
               : std::size_t{1} << 30;
}

}  // namespace

NSURLSessionConfiguration NSURLSessionConfiguration::defaultSessionConfiguration() {
    NSURLSessionConfiguration configuration;
    configuration.certificateFile = environment("SSL_CERT_FILE");
    configuration.certificateFolder = environment("SSL_CERT_DIR");
    configuration.proxy = systemProxy;
    configuration.maximumConnections = std::clamp<std::size_t>(descriptorLimit() / 2, 8, 512);
    // A host that does not answer must not block the requests to others.
    configuration.HTTPMaximumConnectionsPerHost = configuration.maximumConnections / 2;
    configuration.maximumHeaderLength = std::size_t{256} << 10;
    configuration.maximumHeaderLines = 1000;
    configuration.bodyMemory = physicalMemory() / 4;
    return configuration;
}

}  // namespace orvane::platform
