#include <openssl/evp.h>

#include <algorithm>
#include <array>

#include "src/Base64.h"
#include "src/Clock.h"
#include "src/Fields.h"
#include "src/Services.h"

namespace nexwire::simulator {
namespace {

constexpr const char* kUsers = "users";
constexpr const char* kSession = "session";
constexpr std::string_view kSeeded = "_seeded";

constexpr std::int64_t kMostFailures = 5;
constexpr std::int64_t kBanMs = 15 * 60 * 1000;
constexpr std::int64_t kTokenMs = 60 * 60 * 1000;
constexpr std::size_t kRequiredAnswers = 2;
constexpr std::size_t kShortestPassword = 8;
constexpr std::size_t kLongestPassword = 64;
constexpr int kRounds = 4096;

/// Everybody's first password; what is kept of it is a digest.
constexpr const char* kFirstPassword = "Nexwire-2026";

struct Seed {
    const char* guid;
    const char* name;
    const char* realName;
    int type;
    const char* role;
    const char* telephone;
    std::vector<const char*> permissions;
};

const std::vector<Seed>& Seeds()
{
    static const std::vector<Seed> seeds = {
        {"5E000000000000000000000000000001",
         "admin",
         "Platform administrator",
         0,
         "Super user",
         "+47 555 0101",
         {"system", "user", "device", "video", "access", "alarm", "log"}},
        {"5E000000000000000000000000000002",
         "security",
         "Head of security",
         1,
         "Administrator",
         "+47 555 0102",
         {"user", "device", "video", "access", "alarm"}},
        {"5E000000000000000000000000000003",
         "guard",
         "Guard at the gate",
         2,
         "Operator",
         "+47 555 0103",
         {"video", "alarm"}},
        {"5E000000000000000000000000000004", "reception", "Reception desk", 2, "Operator", "+47 555 0104", {"access"}}};
    return seeds;
}

std::string Digest(std::string_view secret, std::string_view salt)
{
    std::array<unsigned char, 32> digest{};
    if (PKCS5_PBKDF2_HMAC(secret.data(), static_cast<int>(secret.size()),
                          reinterpret_cast<const unsigned char*>(salt.data()), static_cast<int>(salt.size()), kRounds,
                          EVP_sha256(), static_cast<int>(digest.size()), digest.data()) != 1) {
        throw std::runtime_error("the digest failed");
    }
    return ToBase64(std::string(reinterpret_cast<const char*>(digest.data()), digest.size()));
}

/// The users and the one who is signed in, as one request sees them. A fresh platform has its administrator signed in.
class Desk {
public:
    Desk(Handling& handling, const Cipher& cipher) : handling_(handling), cipher_(cipher) {}

    Allocator& Memory() { return handling_.Memory(); }

    Json Session()
    {
        Json session = handling_.Load(kSession, kSession);
        return session.IsNull() ? Open(Seeds().front().guid) : std::move(session);
    }
    Json Open(std::string_view userGuid)
    {
        Json session = Fields(Memory()).Text("userGuid", userGuid).Text("loginTime", IsoTime(handling_.nowMs)).Take();
        SaveSession(session);
        return session;
    }
    void SaveSession(const Json& session) { handling_.Save(kSession, kSession, session); }

    Json Current() { return Load(AsText(Member(Session(), "userGuid"))); }
    Json Load(std::string_view guid)
    {
        Json user = handling_.Load(kUsers, guid);
        if (user.IsNull()) {
            throw Refusal(Reason::kUnknownGuid, "user \"" + std::string(guid) + "\"");
        }
        return user;
    }
    /// Null when there is none.
    Json Find(std::string_view name)
    {
        Json found;
        handling_.Each({kUsers, {{"userName", Test::kEquals, StoreValue(std::string(name))}}},
                       [&](const std::string&, Json& user) { found = std::move(user); });
        return found;
    }
    Json Need(std::string_view name)
    {
        Json user = name.empty() ? Current() : Find(name);
        if (user.IsNull()) {
            throw Refusal(Reason::kUnknownGuid, "user \"" + std::string(name) + "\"");
        }
        return user;
    }
    void Save(const Json& user) { handling_.Save(kUsers, AsText(Member(user, "userGuid")), user); }

    std::string Opened(const Json* enciphered) { return cipher_.Decrypt(AsText(enciphered)); }

    bool HasPassword(const Json& user, const Json* enciphered)
    {
        const std::string password = Opened(enciphered);
        return !password.empty() &&
               Digest(password, AsText(Member(user, "_salt"))) == AsText(Member(user, "_password"));
    }
    void SetPassword(Json& user, const std::string& password)
    {
        const std::string salt = Cipher::NewKey();
        Fields(user, Memory()).Text("_salt", salt).Text("_password", Digest(password, salt));
    }

    /// Numbers of the questions that were answered wrong; empty and `all` false when too few were answered.
    std::vector<std::int64_t> WrongAnswers(const Json& user, const Json* answers, bool& enough)
    {
        std::vector<std::int64_t> wrong;
        const Json* kept = Member(user, "_answers");
        std::size_t given = 0;
        for (const Json& answer : Elements(answers)) {
            const std::int64_t problem = AsInt(Member(answer, "problemId"));
            const std::string opened = Opened(Member(answer, "safetyAnswer"));
            const std::string digest = opened.empty() ? "" : Digest(opened, AsText(Member(user, "_answerSalt")));
            const Json* right = kept == nullptr ? nullptr : Member(*kept, std::to_string(problem));
            if (digest.empty() || right == nullptr || digest != AsText(right)) {
                wrong.push_back(problem);
            }
            ++given;
        }
        enough = given >= kRequiredAnswers;
        return wrong;
    }

    Json UserResponse(const Json& user, const Json& session)
    {
        const std::int64_t failures = AsInt(Member(session, "failures"));
        return Fields(Memory())
            .Same("userGuid", user)
            .Same("userName", user)
            .Same("userType", user)
            .Text("token", "")
            .Text("tokenExpireTime", "")
            .Flag("isLocked", AsBool(Member(session, "isLocked")))
            .Number("lockMinutes", AsInt(Member(session, "lockMinutes"), 15))
            .Number("remainTimes", kMostFailures - failures)
            .Take();
    }

private:
    Handling& handling_;
    const Cipher& cipher_;
};

void Check(Handling& handling, Desk& desk)
{
    const Json& body = *handling.body;
    Json user = desk.Need(AsText(Member(body, "userName")));
    Fields change(user, desk.Memory());
    std::int64_t failures = AsInt(Member(user, "_failures"));
    std::int64_t until = AsInt(Member(user, "_bannedUntil"));
    if (until != 0 && until <= handling.nowMs) {
        failures = until = 0;
        change.Flag("isLocked", false);
    }
    Json wrong(rapidjson::kArrayType);
    bool passed = false;
    if (until == 0 && AsBool(Member(user, "enabled"))) {
        if (!AsText(Member(body, "password")).empty()) {
            passed = desk.HasPassword(user, Member(body, "password"));
            if (passed) {
                change.Text("lastLoginTime", IsoTime(handling.nowMs)).Flag("isOnline", true);
                desk.Open(AsText(Member(user, "userGuid")));
            }
        } else {
            bool enough = false;
            for (const std::int64_t problem : desk.WrongAnswers(user, Member(body, "answerList"), enough)) {
                wrong.PushBack(Json(problem), desk.Memory());
            }
            passed = enough && wrong.Empty();
        }
        failures = passed ? 0 : failures + 1;
        if (failures >= kMostFailures) {
            until = handling.nowMs + kBanMs;
            change.Flag("isLocked", true);
        }
    }
    change.Number("_failures", failures).Number("_bannedUntil", until);
    desk.Save(user);
    NoteSignIn(handling, AsText(Member(user, "userName")), passed,
               std::string(AsText(Member(body, "password")).empty() ? "safety answers" : "password") +
                   (passed ? " accepted" : " refused"));
    handling.data = Fields(desk.Memory())
                        .Value("checkAnswerResult",
                               Fields(desk.Memory())
                                   .Flag("isPassed", passed)
                                   .Number("remainTimes", kMostFailures - failures)
                                   .Number("lockSeconds", until == 0 ? 0 : (until - handling.nowMs + 999) / 1000)
                                   .Value("wrongProblemList", std::move(wrong))
                                   .Take())
                        .Take();
}

void Reset(Handling& handling, Desk& desk)
{
    const Json& body = *handling.body;
    Json user = desk.Need(AsText(Member(body, "userName")));
    bool known = false;
    if (!AsText(Member(body, "oldPassword")).empty()) {
        known = desk.HasPassword(user, Member(body, "oldPassword"));
    } else {
        bool enough = false;
        known = desk.WrongAnswers(user, Member(body, "answerList"), enough).empty() && enough;
    }
    if (!known) {
        throw Refusal(Reason::kWrongPassword, AsText(Member(user, "userName")));
    }
    const std::string password = desk.Opened(Member(body, "newPassword"));
    if (password.size() < kShortestPassword || password.size() > kLongestPassword) {
        throw Refusal(Reason::kOutOfRange, "\"newPassword\" must be enciphered and have 8 to 64 characters");
    }
    desk.SetPassword(user, password);
    Fields(user, desk.Memory()).Number("_failures", 0).Number("_bannedUntil", 0).Flag("isLocked", false);
    desk.Save(user);
}

void StoreAnswers(Handling& handling, Desk& desk)
{
    const Json& body = *handling.body;
    Json user = desk.Need(AsText(Member(body, "userName")));
    if (!desk.HasPassword(user, Member(body, "password"))) {
        throw Refusal(Reason::kWrongPassword, AsText(Member(user, "userName")));
    }
    const std::string salt = Cipher::NewKey();
    Json answers(rapidjson::kObjectType);
    for (const Json& answer : Elements(Member(body, "answerList"))) {
        const std::string opened = desk.Opened(Member(answer, "safetyAnswer"));
        if (opened.empty()) {
            throw Refusal(Reason::kOutOfRange, "\"safetyAnswer\" must be enciphered");
        }
        Fields(answers, desk.Memory()).Text(std::to_string(AsInt(Member(answer, "problemId"))), Digest(opened, salt));
    }
    if (answers.MemberCount() < kRequiredAnswers) {
        throw Refusal(Reason::kMissingField, "two answers at least");
    }
    Fields(user, desk.Memory()).Text("_answerSalt", salt).Value("_answers", std::move(answers));
    desk.Save(user);
}

std::int64_t Answered(const Json& user)
{
    const Json* answers = Member(user, "_answers");
    return answers == nullptr ? 0 : answers->MemberCount();
}

void Exists(Handling& handling, Desk& desk)
{
    const std::string_view name = AsText(Member(*handling.body, "userName"));
    const Json user = desk.Find(name);
    handling.data = Fields(desk.Memory())
                        .Value("userIsExist", Fields(desk.Memory())
                                                  .Text("userName", name)
                                                  .Flag("isExist", !user.IsNull())
                                                  .Flag("enabled", AsBool(Member(user, "enabled")))
                                                  .Flag("isSafeProblemSet", Answered(user) > 0)
                                                  .Take())
                        .Take();
}

void Current(Handling& handling, Desk& desk)
{
    const Json session = desk.Session();
    const Json user = desk.Current();
    handling.data =
        Fields(desk.Memory())
            .Value("currentUserInfo",
                   Fields(desk.Memory())
                       .Same("userGuid", user)
                       .Same("userName", user)
                       .Same("userType", user)
                       .Same("roleList", user)
                       .Same("permissionCodeList", user)
                       .Same("loginTime", session)
                       .Text("clientAddress", "127.0.0.1")
                       .Value("lockParam", Fields(desk.Memory())
                                               .Flag("autoLock", AsInt(Member(session, "lockMinutes"), 15) > 0)
                                               .Number("lockMinutes", AsInt(Member(session, "lockMinutes"), 15))
                                               .Number("maxFailures", kMostFailures)
                                               .Number("banMinutes", kBanMs / 60000)
                                               .Take())
                       .Take())
            .Take();
}

void Lock(Handling& handling, Desk& desk)
{
    enum { kAsk, kLock, kUnlock };
    const Json& body = *handling.body;
    Json session = desk.Session();
    const Json user = desk.Load(AsText(Member(session, "userGuid")));
    Fields change(session, desk.Memory());
    if (AsInt(Member(body, "lockMinutes")) > 0) {
        change.Same("lockMinutes", body);
    }
    const std::int64_t operation = AsInt(Member(body, "operateType"));
    const std::int64_t failures = AsInt(Member(session, "failures"));
    const auto note = [&](bool passed, const char* what) {
        NoteSignIn(handling, AsText(Member(user, "userName")), passed, what);
    };
    if (operation == kLock) {
        change.Flag("isLocked", true);
        note(true, "screen locked");
    } else if (operation == kUnlock && failures < kMostFailures) {
        const bool right = desk.HasPassword(user, Member(body, "password"));
        change.Flag("isLocked", !right).Number("failures", right ? 0 : failures + 1);
        note(right, right ? "screen unlocked" : "screen stays locked");
    }
    desk.SaveSession(session);
    handling.data = Fields(desk.Memory()).Value("userResponseInfo", desk.UserResponse(user, session)).Take();
}

void Token(Handling& handling, Desk& desk)
{
    const Json session = desk.Session();
    const Json user = desk.Load(AsText(Member(session, "userGuid")));
    Json answer = desk.UserResponse(user, session);
    if (AsBool(Member(session, "isLocked"))) {
        throw Refusal(Reason::kWrongPassword, "the screen is locked");
    }
    Fields(answer, desk.Memory()).Text("token", NewGuid()).Text("tokenExpireTime", IsoTime(handling.nowMs + kTokenMs));
    handling.data = Fields(desk.Memory()).Value("userResponseInfo", std::move(answer)).Take();
}

void IsSuper(Handling& handling, Desk& desk)
{
    const std::string_view guid = AsText(Member(*handling.body, "userGuid"));
    const Json user = guid.empty() ? desk.Need(AsText(Member(*handling.body, "userName"))) : desk.Load(guid);
    handling.data = Fields(desk.Memory())
                        .Value("currentUserInforRsp", Fields(desk.Memory())
                                                          .Same("userGuid", user)
                                                          .Same("userName", user)
                                                          .Flag("isSuperUser", AsInt(Member(user, "userType")) == 0)
                                                          .Take())
                        .Take();
}

void HasAnswers(Handling& handling, Desk& desk)
{
    const Json user = desk.Current();
    handling.data = Fields(desk.Memory())
                        .Value("userSafeProblemIsSet", Fields(desk.Memory())
                                                           .Same("userName", user)
                                                           .Flag("isSet", Answered(user) > 0)
                                                           .Number("answeredNum", Answered(user))
                                                           .Take())
                        .Take();
}

void Permissions(Handling& handling, Desk& desk)
{
    const Json user = desk.Current();
    const bool super = AsInt(Member(user, "userType")) == 0;
    const auto held = Elements(Member(user, "permissionCodeList"));
    Json list(rapidjson::kArrayType);
    const auto add = [&](std::string_view code, std::string_view name) {
        const bool permitted =
            super || std::any_of(held.begin(), held.end(), [&](const Json& each) { return AsText(&each) == code; });
        list.PushBack(Fields(desk.Memory())
                          .Text("permissionCode", code)
                          .Text("permissionName", name)
                          .Flag("isPermitted", permitted)
                          .Take(),
                      desk.Memory());
    };
    const auto asked = Elements(Member(*handling.body, "permissionCodeInfoList"));
    for (const Json& each : asked) {
        const Json item = handling.Load("permissionItems", AsText(Member(each, "permissionCode")));
        add(AsText(Member(each, "permissionCode")), AsText(Member(item, "permissionName")));
    }
    if (asked.Empty()) {
        handling.Each({"permissionItems"},
                      [&](const std::string& code, Json& item) { add(code, AsText(Member(item, "permissionName"))); });
    }
    handling.data = Fields(desk.Memory()).Value("permissionCodeInfoList", std::move(list)).Take();
}

} // namespace

void AddUsers(Services& services, std::shared_ptr<const Cipher> cipher)
{
    using Step = void (*)(Handling&, Desk&);
    constexpr std::pair<const char*, Step> kSteps[] = {{"userExists", Exists},     {"checkPassword", Check},
                                                       {"resetPassword", Reset},   {"storeAnswers", StoreAnswers},
                                                       {"hasAnswers", HasAnswers}, {"currentUser", Current},
                                                       {"lockScreen", Lock},       {"loginToken", Token},
                                                       {"isSuperUser", IsSuper},   {"permissions", Permissions}};
    for (const auto& [name, step] : kSteps) {
        services[name] = [cipher, step = step](Handling& handling) {
            Desk desk(handling, *cipher);
            step(handling, desk);
        };
    }
}

void SeedUsers(Store& store, const Cipher& cipher)
{
    Store::Transaction transaction(store);
    if (!transaction.Insert(kSeeded, kUsers, "{}")) {
        return;
    }
    for (const Seed& seed : Seeds()) {
        Document document(rapidjson::kObjectType);
        Allocator& memory = document.GetAllocator();
        const std::string salt = Cipher::NewKey();
        Json permissions(rapidjson::kArrayType);
        for (const char* code : seed.permissions) {
            permissions.PushBack(MakeText(code, memory), memory);
        }
        Json roles(rapidjson::kArrayType);
        roles.PushBack(Fields(memory)
                           .Text("roleGuid", "50000000000000000000000000000" + std::to_string(100 + seed.type))
                           .Text("roleName", seed.role)
                           .Take(),
                       memory);
        Fields(document, memory)
            .Text("userGuid", seed.guid)
            .Text("userName", seed.name)
            .Text("realName", seed.realName)
            .Number("userType", seed.type)
            .Flag("enabled", true)
            .Flag("isLocked", false)
            .Flag("isOnline", seed.type == 0)
            .Value("roleList", std::move(roles))
            .Value("permissionCodeList", std::move(permissions))
            .Text("telephone", cipher.Encrypt(seed.telephone))
            .Text("email", std::string(seed.name) + "@example.org")
            .Text("lastLoginTime", "")
            .Text("_salt", salt)
            .Text("_password", Digest(kFirstPassword, salt));
        transaction.Write(kUsers, seed.guid, PrintJson(document));
    }
    transaction.Commit();
}

std::string SignedIn(Store::Transaction& transaction)
{
    const std::string session = transaction.Read(kSession, kSession).value_or("{}");
    const Document parsed = ParseOwn(session);
    const std::string_view guid = AsText(Member(parsed, "userGuid"), Seeds().front().guid);
    const Document user = ParseOwn(transaction.Read(kUsers, guid).value_or("{}"));
    return std::string(AsText(Member(user, "userName")));
}

} // namespace nexwire::simulator
