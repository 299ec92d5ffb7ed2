#include "app/model/photo_folders.h"

#include <osp/io/directory.h>

namespace Kivo {

bool IsCardThere() {
    return Osp::Io::Directory::Exists(kCardFolder);
}

StorageType StorageInUse(const CameraSetting& setting) {
    const bool isOnCard = setting.GetStorageType() == StorageType::kMemoryCard && IsCardThere();
    return isOnCard ? StorageType::kMemoryCard : StorageType::kPhone;
}

}  // namespace Kivo
