#include "album/album_list.h"

#include <algorithm>
#include <iterator>

#include "app/model/photo_number.h"

namespace Kivo {

std::vector<std::string> ListPhotographs(std::span<const std::string> folderNames) {
    std::vector<int> numbers;
    for (const std::string& name : folderNames) {
        if (const auto number = PhotoNumberOf(name)) numbers.push_back(*number);
    }
    std::ranges::sort(numbers);
    std::vector<std::string> names;
    names.reserve(numbers.size());
    std::ranges::transform(numbers, std::back_inserter(names), PhotoFileName);
    return names;
}

}  // namespace Kivo
