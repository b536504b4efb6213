#include "windows/WindowsHost.h"

#include <filesystem>

#include "files/Paths.h"

namespace vlm::server {

namespace {

std::string TemporaryFolder() {
    std::error_code failure;
    std::string folder = files::TextOf(std::filesystem::temp_directory_path(failure));
    if (!folder.empty() && folder.back() == '\\') folder.pop_back();
    return folder;
}

}  // namespace

WindowsHost::WindowsHost() : utility_(TemporaryFolder()) {}

std::unique_ptr<DefaultHost> MakeDefaultHost() { return std::make_unique<WindowsHost>(); }

}  // namespace vlm::server
