// What scripts print and look for: the screen, the photographs, the settings, the sounds.
#pragma once

#include <string>
#include <vector>

namespace Host {

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

}  // namespace Host
