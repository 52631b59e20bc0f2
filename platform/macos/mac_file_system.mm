#include "platform/file_system.hpp"

#include "platform/macos/mac_factories.hpp"
#include "platform/macos/mac_file_replacement.hpp"
#include "platform/macos/mac_property_list.hpp"
#include "platform/macos/mac_text.hpp"

#import <Foundation/Foundation.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace orvel::macos {

namespace {

namespace fs = std::filesystem;

std::string firstDirectory(NSSearchPathDirectory directory) {
    NSArray* found = NSSearchPathForDirectoriesInDomains(directory, NSUserDomainMask, YES);
    return utf8OfObject((__bridge CFTypeRef)found.firstObject);
}

Failure failure(std::string_view path, const std::error_code& error) {
    return {std::string(path) + ": " + error.message()};
}

class MacFileSystem final : public FileSystem {
public:
    [[nodiscard]] std::string homeDirectory() const override {
        @autoreleasepool {
            return utf8(NSHomeDirectory());
        }
    }
    [[nodiscard]] std::string cachesDirectory() const override {
        @autoreleasepool {
            return firstDirectory(NSCachesDirectory);
        }
    }

    [[nodiscard]] Result<std::vector<std::string>> list(std::string_view path) const override {
        std::error_code error;
        std::vector<std::string> names;
        for (fs::directory_iterator entry(path, error), end; !error && entry != end;
             entry.increment(error)) {
            names.push_back(entry->path().filename().string());
        }
        if (error) return failure(path, error);
        return names;
    }

    [[nodiscard]] bool exists(std::string_view path) const override {
        std::error_code error;
        return fs::exists(path, error);
    }

    [[nodiscard]] Result<std::vector<std::byte>> read(std::string_view path) const override {
        std::error_code error;
        const auto size = fs::file_size(path, error);
        if (error) return failure(path, error);
        std::vector<std::byte> bytes(size);
        std::ifstream file(std::string(path), std::ios::binary);
        file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(size));
        if (!file) return Failure{std::string(path) + ": cannot be read"};
        return bytes;
    }

    [[nodiscard]] Result<Json> readPropertyList(std::string_view path) const override {
        const Result<std::vector<std::byte>> bytes = read(path);
        if (!bytes) return Failure{bytes.error()};
        Result<Json> json = jsonOfPropertyList(bytes.value());
        if (!json) return Failure{std::string(path) + ": " + json.error()};
        return json;
    }

    Result<> writeAtomically(std::string_view path, std::span<const std::byte> bytes) override {
        return replaceFile(std::string(path), bytes);
    }

    Result<> remove(std::string_view path) override {
        std::error_code error;
        if (!fs::remove_all(path, error) && !error) {
            error = std::make_error_code(std::errc::no_such_file_or_directory);
        }
        if (error) return failure(path, error);
        return {};
    }

    Result<> createFolder(std::string_view path) override {
        std::error_code error;
        if (fs::is_directory(path, error)) return {};
        fs::create_directories(fs::path(path).parent_path(), error);
        if (!error && fs::create_directory(path, error)) {
            fs::permissions(path, fs::perms::owner_all, error);
        }
        if (error) return failure(path, error);
        return {};
    }
};

}  // namespace

std::unique_ptr<FileSystem> makeFileSystem() { return std::make_unique<MacFileSystem>(); }

}  // namespace orvel::macos
