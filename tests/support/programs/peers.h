// The servers that the camera shares with (peers.py), for the time of a test.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "tests/support/programs/process.h"

namespace Osp::Testing {

class Peers {
  public:
    /// Ends the test program when they do not start.
    Peers();

    /// For --services and --ca.
    std::string ServicesFile() const { return about_["services"]; }
    std::string AuthorityFile() const { return about_["authority"]; }
    /// As "localhost:8440".
    std::string Host(const std::string& service) const { return about_["hosts"][service]; }

    /// Says what peers/control.py lists, to the control port.
    void Control(const nlohmann::json& words) const;
    /// What has arrived, in the order of arrival.
    nlohmann::json Received() const;
    /// The file of the upload with that place among them.
    std::string Content(std::size_t place) const;

  private:
    std::string Ask(const std::string& head, const std::string& body) const;

    Process process_;
    nlohmann::json about_;
};

}  // namespace Osp::Testing
