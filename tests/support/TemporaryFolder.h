#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

namespace orvane::tests {

// An empty folder that exists as long as this object.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string name = std::filesystem::temp_directory_path() / "orvane-XXXXXX";
        path_ = mkdtemp(name.data());
    }
    ~TemporaryFolder() { std::filesystem::remove_all(path_); }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

// A user without any files: the XDG folders are inside a temporary folder as long as this object
// exists.
class TemporaryUser {
public:
    TemporaryUser() {
        setenv("XDG_DATA_HOME", data().c_str(), 1);
        setenv("XDG_CONFIG_HOME", configuration().c_str(), 1);
        setenv("XDG_DATA_DIRS", (folder_.path() / "system").c_str(), 1);
    }
    ~TemporaryUser() {
        for (const char* name : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_DATA_DIRS"}) {
            unsetenv(name);
        }
    }
    TemporaryUser(const TemporaryUser&) = delete;
    TemporaryUser& operator=(const TemporaryUser&) = delete;

    [[nodiscard]] std::filesystem::path data() const { return folder_.path() / "data"; }
    [[nodiscard]] std::filesystem::path configuration() const { return folder_.path() / "config"; }
    [[nodiscard]] std::filesystem::path system() const { return folder_.path() / "system"; }

private:
    TemporaryFolder folder_;
};

}  // namespace orvane::tests
