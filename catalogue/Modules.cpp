#include "catalogue/Modules.h"

namespace nexwire {
namespace catalogue {

extern const Module kAccessControllerModule;
extern const Module kFrameworkModule;
extern const Module kPassThroughModule;

const std::vector<Module>& Modules()
{
    static const std::vector<Module> modules = {kAccessControllerModule, kPassThroughModule, kFrameworkModule};
    return modules;
}

} // namespace catalogue
} // namespace nexwire
