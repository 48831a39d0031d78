#include "abacus/Program.h"

#include "Table.h"

namespace Abacus {

// clang-format off
ABACUS_PART_TABLE(TextStyle, M(fontSize), M(fontName), M(alignment), M(scrollDirection), M(scrollSpeed), M(isSptColor), M(isSptTransparent))
ABACUS_PART_TABLE(SwitchEffect, M(effect), M(durationS))
ABACUS_PART_TABLE(PageWindow, M(materialType), M(num), M(width), M(height), M(materialNum), M(switchEffect))
ABACUS_DOCUMENT_TABLE(Program, "Program", M(nameLength), M(remarkLength), M(programType), M(shareProperty), M(width), M(height), M(resolution), M(pageNum), M(programNum), M(isSptApproval), M(isSptPreview), M(isSptCopy), M(isSptBackgroundMusic))
ABACUS_DOCUMENT_TABLE(ProgramSearchAbility, "ProgramSearchAbility", M(maxResults), M(searchBy), M(approveState), M(orderBy), M(nameLength), M(isSptFuzzyName))
ABACUS_PART_TABLE(ResolutionLimit, M(resolution), M(pageNum), M(windowNum), M(videoWindowNum), M(streamWindowNum))
ABACUS_DOCUMENT_TABLE(ProgramDynamicCap, "ProgramDynamicCap", L(resolutionList, "resolutionLimit"), M(totalSizeMB), M(isSptMixedResolution))
ABACUS_DOCUMENT_TABLE(Page, "Page", M(nameLength), M(playMode), M(playDurationS), M(windowNum), L(windowList, "window"), M(textStyle), M(pageSwitch), M(layoutTemplate), M(isSptBackgroundPicture), M(isSptOverlap))
ABACUS_PART_TABLE(WindowCombination, M(materialType), M(excludes), M(num), M(decodeNum))
ABACUS_DOCUMENT_TABLE(WinDynamicCap, "WinDynamicCap", L(combinationList, "combination"), M(totalDecodeNum), M(isSptCameraOverlay))
ABACUS_DOCUMENT_TABLE(TemplateCap, "TemplateCap", M(nameLength), M(remarkLength), M(templateType), M(shareProperty), M(templateNum), M(width), M(height), M(isSptThumbnail), M(isSptFromProgram))
ABACUS_DOCUMENT_TABLE(TemplateSearchCap, "TemplateSearchCap", M(maxResults), M(searchBy), M(orderBy), M(nameLength))
ABACUS_PART_TABLE(ScheduleKind, M(type), M(dayNum), M(spanNum), M(programNum))
ABACUS_DOCUMENT_TABLE(PlaySchedule, "PlaySchedule", M(nameLength), M(remarkLength), M(scheduleMode), M(shareProperty), M(scheduleNum), L(kindList, "kind"), M(minSpanS), M(isSptCrossMidnight), M(isSptInsertProgram), M(isSptApproval))
// clang-format on

} // namespace Abacus
