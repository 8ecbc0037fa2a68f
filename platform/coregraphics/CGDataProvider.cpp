#include "platform/coregraphics/CGDataProvider.h"

#include <filesystem>
#include <fstream>
#include <system_error>
#include <utility>
#include <vector>

namespace orvane::platform {

namespace {

constexpr std::uintmax_t kLargestFile = std::uintmax_t{256} << 20;

}  // namespace

std::shared_ptr<const CGDataProvider> CGDataProvider::createWithData(
    orvane::commons::ByteArray data) {
    auto provider = std::make_shared<CGDataProvider>();
    provider->data_ = data;
    return provider;
}

std::shared_ptr<const CGDataProvider> CGDataProvider::createWithFilename(
    const std::string& filename) {
    // Only regular files are opened: reading a device or a pipe might not end.
    std::error_code error;
    const std::filesystem::path path(filename);
    if (!std::filesystem::is_regular_file(path, error)) {
        return nullptr;
    }
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    if (error || size > kLargestFile) {
        return nullptr;
    }
    std::ifstream file(path, std::ios::binary);
    auto bytes = std::make_shared<std::vector<unsigned char>>(static_cast<std::size_t>(size));
    file.read(reinterpret_cast<char*>(bytes->data()), static_cast<std::streamsize>(size));
    if (!file) {
        return nullptr;
    }
    const unsigned char* data = bytes->data();
    return createWithData({data, static_cast<unsigned long>(size), std::move(bytes)});
}

}  // namespace orvane::platform
