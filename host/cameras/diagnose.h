// What the program found on this machine, for a person or a program to read.
#pragma once

#include <memory>
#include <string>

#include "host/cameras/camera_modules.h"
#include "host/options.h"
#include "host/outcome.h"
#include "host/time.h"
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

    /// The two that would be used, and all that there are.
    int ListCameras();
    int Print(const std::string& packageFolder);

  private:
    Diagnosis(const Options& options, const std::string& resourceFolder);

    std::string IdOf(Osp::Media::CameraSelection selection) const;
    void PrintAsJson(const std::string& packageFolder);
    std::string RealPath(const char* virtualPath);

    const bool isJson_;
    Time time_{ClockKind::kReal};
    CameraModules modules_;
    Osp::Io::StorageMap storage_;
    std::unique_ptr<Osp::Media::CameraService> cameras_;
};

}  // namespace Host
