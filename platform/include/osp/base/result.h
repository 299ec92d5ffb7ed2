// Result codes of the platform.
#pragma once

#include <cstdint>

namespace Osp {

/// The outcome of an operation: 0 for success, else a code with the top bit set.
enum class [[nodiscard]] result : std::uint32_t{
    kSuccess = 0,
    kFailure = 0x80000000,          ///< generic failure
    kMapConstruction = 0xA00009C9,  ///< a map could not be built
    kInvalidArgument = 0xA0000775,
    kKeyNotFound = 0xA0000835,
    kEndOfFile = 0xA00005DF,
    kKeyAlreadyExists = 0xA0000836,
    kInvalidState = 0xA0000776,  ///< the object is not in a state that allows the call
    kUnsupported = 0xA0000777,   ///< this device or format cannot do it
    kOutOfRange = 0xA0000778,
    kObjectNotFound = 0xA0000779,
    kOutOfMemory = 0xA000077B,
    kInvalidFormat = 0xA000077A,  ///< data that is not what it claims to be
    kFileNotFound = 0xA00005E0,
    kStorageFull = 0xA00005E1,
    kPermissionDenied = 0xA00005E2,
    kIo = 0xA00005E3,  ///< any other input or output error
    kDeviceBusy = 0xA0000A00,
    kTimedOut = 0xA0000A01,
    kNotConnected = 0xA0000A02,  ///< there is no such server, or no way to it
    kUntrusted = 0xA0000A03,     ///< who the other side is cannot be verified
};

constexpr bool Succeeded(result r) {
    return r == result::kSuccess;
}
constexpr bool Failed(result r) {
    return r != result::kSuccess;
}

}  // namespace Osp

using Osp::result;
