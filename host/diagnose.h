// What the program found on this machine, for a person to read.
#pragma once

#include <memory>
#include <string>

#include "host/options.h"
#include "host/outcome.h"
#include "osp/io/storage_map.h"
#include "osp/media/camera/camera_service.h"

namespace Host {

/// Prints to standard output; creates and changes nothing, and needs no data folder of its own. The
/// methods return the exit code.
class Diagnosis {
  public:
    /// As Machine::Make.
    static Outcome<std::unique_ptr<Diagnosis>> Make(const Options& options,
                                                    const std::string& resourceFolder);

    int ListCameras() const;
    int Print(const std::string& packageFolder);

  private:
    Diagnosis(const Options& options, const std::string& resourceFolder,
              std::unique_ptr<Osp::Media::CameraService> cameras);
    void PrintFolder(const char* virtualPath);

    Osp::Io::StorageMap storage_;
    std::unique_ptr<Osp::Media::CameraService> cameras_;
};

}  // namespace Host
