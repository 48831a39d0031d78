#pragma once

#include <string>
#include <vector>

#include "catalogue/Catalogue.h"

namespace nexwire::catalogue {

/// A member of a structure as everything that documents it shows it.
struct MemberView {
    std::string key;
    core::Kind kind = core::Kind::Text;
    std::string type;      ///< "text", "list of integers", "PersonnelAdd", "list of PersonnelAdd".
    std::string structure; ///< Set for members that are one or a list of them.
    bool list = false;
    std::string doc;
    const Limits* limits = nullptr; ///< Never null in a view.
};

/// A structure or a plain record.
struct StructureView {
    std::string name;
    std::string rootName; ///< Key it is sent under; empty for results and records.
    std::string doc;
    std::vector<MemberView> members;
};

/// The structure of that name; one without members when nobody knows it.
StructureView ViewOf(const std::string& structure);

/// Names of all structures reachable from these, each once, those first.
std::vector<std::string> Reachable(const std::vector<std::string>& structures);

/// What is known of a function from running it once.
struct Observed {
    const Function* function = nullptr;
    std::string name; ///< Unique, see `UniqueName`.
    bool sent = false;
    bool direct = false; ///< Straight to the video wall service.
    RequestParams request{"", 0};
    std::string path; ///< Identifiers and numbers by name, in braces.
    std::vector<std::string> before;

    std::string inputStructure;  ///< Of the body, or of the text that a device receives; empty without one.
    std::string outputStructure; ///< Of "data", or of the text that a device answers; empty without one.
    bool outputIsList = false;   ///< The result is a list of them.
    std::string bodyStructure;   ///< Of the whole body, where a structure has its root name.
    std::string dataStructure;   ///< That "data" is read into, whether or not it is the result itself.
    std::string wallData;        ///< JSON of a "data" with everything that is read of it, of video wall functions.
    bool needsData = false;      ///< An answer without anything in "data" is no success.
    std::string handsOut;        ///< The argument that receives the answer's body as it stands.
    std::string root;            ///< That name: the only key of a body that is an object with one member.

    bool passThrough = false; ///< Relayed to a device.
    bool batch = false;       ///< As one step of a batch.
    int command = 0;          ///< Code of the relayed command.
    std::string condition;    ///< Its condition, with arguments by name in braces.
    std::string deviceInput;  ///< JSON of the structure that the device receives.

    /// The body as JSON for people: what the device receives, which stands in it as one long text, is only hinted at.
    std::string ShownBody() const;
};

/// The structures that a person needs to know for a function: those of its arguments and, unless a device gets them, of
/// its body.
std::vector<std::string> StructuresOf(const Observed& observed);

/// The function's declaration in its header, the parameters on lines of their own when it is long.
std::string DeclarationOf(const Function& function);

/// Runs functions against a recorder. Not more than one at a time in a process; the library must not be initialised.
class Observer {
public:
    Observed Observe(const Function& function);

    /// Whether what an argument holds before the call has a part in the request. Results do not, unless they are
    /// requests that come back filled.
    bool Travels(const Function& function, std::size_t index);

private:
    Recorder recorder_;
};

} // namespace nexwire::catalogue
