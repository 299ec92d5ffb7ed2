// What scripts print and look for: the screen, the photographs, the settings, the sounds, the
// cameras.
#pragma once

#include <string>
#include <vector>

namespace Host {

class CameraModules;

/// The current form's class; empty when there is none.
std::string CurrentFormName();
/// Whether `text` stands in a text of a visible control.
bool IsTextVisible(const std::string& text);
/// Whether a picture of the camera is on the screen with nothing as large as the screen over it.
bool HasPreview();

/// Virtual paths of the stored photographs, memory card last, each folder in name order.
std::vector<std::string> PhotoPaths();

// One JSON object each, without a line end.
std::string ScreenReport();
std::string PhotosReport();
std::string RegistryReport();
std::string SoundsReport();
/// The two places, and the real cameras that can be had where such are in use.
std::string CamerasReport(CameraModules& modules);

}  // namespace Host
