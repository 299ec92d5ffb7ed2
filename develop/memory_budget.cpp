#include "develop/memory_budget.h"

#include <algorithm>
#include <cassert>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <system_error>
#include <vector>

#include "develop/pictures/picture_format.h"
#include "osp/base/owner.h"

namespace Kivo::Tools {

namespace {

constexpr std::size_t kBudgetBytes = 750'000'000;  // the rest is for what is not counted
/// Measured with the recipe that takes most: the picture, the developed one, its map and HDR.
constexpr std::size_t kBytesPerPixel = 16;
constexpr std::size_t kHeaderBytes = 256 * 1024;  // most that is read to find the size

std::vector<std::uint8_t> ReadStart(const std::string& path) {
    const Osp::Base::Owner<std::FILE, std::fclose> file(std::fopen(path.c_str(), "rbe"));
    std::vector<std::uint8_t> bytes(kHeaderBytes);
    bytes.resize(file ? std::fread(bytes.data(), 1, bytes.size(), file.get()) : 0);
    return bytes;
}

}  // namespace

std::size_t NeededBytes(const std::string& path) {
    std::error_code error;
    const std::uintmax_t fileBytes = std::filesystem::file_size(path, error);
    if (error) return 0;
    Osp::Graphics::Dimension size;
    const std::vector<std::uint8_t> start = ReadStart(path);
    if (!ReadPictureSize(start, size).empty()) {
        return start.size() < kHeaderBytes ? start.size() : kBudgetBytes;
    }
    return fileBytes + kBytesPerPixel * static_cast<std::size_t>(size.width) *
                           static_cast<std::size_t>(size.height);
}

void MemoryBudget::Take(std::size_t bytes) {
    bytes = std::min(bytes, kBudgetBytes);
    std::unique_lock lock(mutex_);
    given_.wait(lock, [&] { return taken_ + bytes <= kBudgetBytes; });
    taken_ += bytes;
}

void MemoryBudget::Give(std::size_t bytes) {
    {
        const std::lock_guard lock(mutex_);
        assert(taken_ >= std::min(bytes, kBudgetBytes));
        taken_ -= std::min(bytes, kBudgetBytes);
    }
    given_.notify_all();
}

}  // namespace Kivo::Tools
