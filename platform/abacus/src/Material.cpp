#include "abacus/Material.h"

#include "Table.h"

namespace Abacus {

// clang-format off
ABACUS_PART_TABLE(MaterialFormat, M(type), M(format), M(sizeKB), M(width), M(height), M(durationS))
ABACUS_PART_TABLE(DynamicMaterial, M(type), M(addressLength), M(protocol), M(refreshS), M(isSptLogin))
ABACUS_DOCUMENT_TABLE(MaterialAbility, "MaterialAbility", M(nameLength), M(remarkLength), M(materialType), M(shareProperty), M(materialNum), M(totalSizeMB), L(formatList, "format"), L(dynamicList, "dynamic"), M(isSptReplace), M(isSptApproval), M(isSptThumbnail), M(isSptResume))
ABACUS_DOCUMENT_TABLE(MaterialSearchAbility, "MaterialSearchAbility", M(maxResults), M(searchBy), M(approveState), M(orderBy), M(nameLength), M(isSptFuzzyName))
ABACUS_DOCUMENT_TABLE(TouchWndMaterial, "TouchWndMaterial", M(materialType), M(materialNum), M(gesture), M(backTimeS), M(isSptNestedPage))
ABACUS_DOCUMENT_TABLE(AudioWidMatarialAbility, "AudioWidMatarialAbility", M(format), M(sizeKB), M(materialNum), M(volume), M(playMode), M(isSptBackground))
// clang-format on

} // namespace Abacus
