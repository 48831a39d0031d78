#pragma once

namespace nexwire {

/// Where the register's services stand, for clients and for components of the platform.
constexpr const char* kPersonnelRoot = "/7730/v1/personalManagement/";
constexpr const char* kInternalPersonnelRoot = "/7730/v1/internal/personalManagement/";

} // namespace nexwire
