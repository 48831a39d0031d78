#include <pier/Pier.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>
#include <thread>

#include <gmock/gmock.h>

namespace {

namespace fs = std::filesystem;

const int kReplace = PIER_OPEN_WRITE | PIER_OPEN_CREATE | PIER_OPEN_TRUNCATE;

class Pier : public testing::Test {
protected:
    Pier()
    {
        const testing::TestInfo& test = *testing::UnitTest::GetInstance()->current_test_info();
        folder_ = fs::temp_directory_path() / (std::string("nexwire-pier-") + test.name());
        fs::remove_all(folder_);
        fs::create_directories(folder_);
    }
    ~Pier() override { fs::remove_all(folder_); }

    std::string Path(const std::string& name) const { return (folder_ / fs::u8path(name)).u8string(); }

    static void Write(const std::string& path, const std::string& text, int flags = kReplace)
    {
        Pier_File* const file = Pier_OpenFile(path.c_str(), flags);
        ASSERT_NE(file, nullptr) << std::system_category().message(Pier_GetLastError());
        EXPECT_EQ(Pier_WriteFile(file, text.data(), text.size()), static_cast<std::int64_t>(text.size()));
        EXPECT_EQ(Pier_CloseFile(file), 0);
    }

    static std::string Read(const std::string& path)
    {
        std::ifstream file(fs::u8path(path), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }

    fs::path folder_;
};

TEST_F(Pier, WritesEveryByteUnderEveryName)
{
    std::string all;
    for (int i = 0; i < 256; ++i) {
        all += static_cast<char>(i);
    }
    all += "\r\n\n\x1A end";
    for (const std::string name : {"plain.bin", "\xE5\x9C\xB0\xE5\x9B\xBE \xF0\x9F\x98\x80.jpg"}) {
        Write(Path(name), all);
        EXPECT_EQ(Read(Path(name)), all);
        Pier_File* const file = Pier_OpenFile(Path(name).c_str(), PIER_OPEN_READ);
        ASSERT_NE(file, nullptr);
        std::string back(1000, '?');
        EXPECT_EQ(Pier_ReadFile(file, &back[0], 100), 100);
        EXPECT_EQ(Pier_ReadFile(file, &back[100], 900), static_cast<std::int64_t>(all.size()) - 100);
        EXPECT_EQ(Pier_ReadFile(file, &back[0], 1), 0);
        EXPECT_EQ(back.substr(0, all.size()), all);
        EXPECT_EQ(Pier_CloseFile(file), 0);
    }
}

TEST_F(Pier, FlagsDecideWhatHappensToAnExistingFile)
{
    const std::string path = Path("file");
    EXPECT_EQ(Pier_OpenFile(path.c_str(), PIER_OPEN_WRITE), nullptr);
    EXPECT_EQ(Pier_OpenFile(path.c_str(), PIER_OPEN_READ), nullptr);
    EXPECT_FALSE(fs::exists(path));
    Write(path, "first text", PIER_OPEN_WRITE | PIER_OPEN_CREATE | PIER_OPEN_EXCLUSIVE);
    EXPECT_EQ(Pier_OpenFile(path.c_str(), PIER_OPEN_WRITE | PIER_OPEN_CREATE | PIER_OPEN_EXCLUSIVE), nullptr);
    EXPECT_EQ(std::error_code(Pier_GetLastError(), std::system_category()), std::errc::file_exists);
    Write(path, "FIRST", PIER_OPEN_WRITE | PIER_OPEN_CREATE);
    EXPECT_EQ(Read(path), "FIRST text");
    Write(path, "new");
    EXPECT_EQ(Read(path), "new");
}

TEST_F(Pier, RenameReplacesAndDeleteRemoves)
{
    Write(Path("part"), "complete");
    Write(Path("target"), "old");
    EXPECT_EQ(Pier_RenameFile(Path("part").c_str(), Path("target").c_str()), 0);
    EXPECT_EQ(Read(Path("target")), "complete");
    EXPECT_FALSE(fs::exists(Path("part")));
    EXPECT_EQ(Pier_RenameFile(Path("part").c_str(), Path("target").c_str()), -1);
    EXPECT_EQ(Read(Path("target")), "complete");
    EXPECT_EQ(Pier_DeleteFile(Path("target").c_str()), 0);
    EXPECT_EQ(Pier_DeleteFile(Path("target").c_str()), -1);
    EXPECT_EQ(std::error_code(Pier_GetLastError(), std::system_category()), std::errc::no_such_file_or_directory);
    fs::create_directory(Path("folder"));
    EXPECT_EQ(Pier_DeleteFile(Path("folder").c_str()), -1);
    EXPECT_TRUE(fs::exists(Path("folder")));
}

TEST_F(Pier, RefusesBadArguments)
{
    EXPECT_EQ(Pier_OpenFile(nullptr, kReplace), nullptr);
    EXPECT_EQ(Pier_OpenFile("", kReplace), nullptr);
    EXPECT_EQ(Pier_OpenFile(folder_.u8string().c_str(), kReplace), nullptr);
    EXPECT_EQ(Pier_OpenFile(Path("no/such/folder").c_str(), kReplace), nullptr);
    Write(Path("kept"), "kept");
    for (const int flags : {0, int(PIER_OPEN_CREATE), PIER_OPEN_READ | PIER_OPEN_TRUNCATE,
                            PIER_OPEN_READ | PIER_OPEN_CREATE, PIER_OPEN_WRITE | PIER_OPEN_EXCLUSIVE}) {
        EXPECT_EQ(Pier_OpenFile(Path("kept").c_str(), flags), nullptr) << flags;
        EXPECT_EQ(std::error_code(Pier_GetLastError(), std::system_category()), std::errc::invalid_argument);
    }
    EXPECT_EQ(Read(Path("kept")), "kept");
    EXPECT_EQ(Pier_WriteFile(nullptr, "x", 1), -1);
    EXPECT_EQ(Pier_CloseFile(nullptr), -1);
    EXPECT_EQ(Pier_DeleteFile(nullptr), -1);
    EXPECT_EQ(Pier_RenameFile(Path("kept").c_str(), nullptr), -1);
    Pier_File* const file = Pier_OpenFile(Path("kept").c_str(), PIER_OPEN_READ);
    EXPECT_EQ(Pier_WriteFile(file, "x", 1), -1);
    EXPECT_EQ(Pier_WriteFile(file, nullptr, 1), -1);
    EXPECT_EQ(Pier_CloseFile(file), 0);
    std::thread([] { EXPECT_EQ(Pier_GetLastError(), 0); }).join();
}

#ifdef __linux__
TEST_F(Pier, FullDiskFailsTheWrite)
{
    Pier_File* const file = Pier_OpenFile("/dev/full", PIER_OPEN_WRITE);
    EXPECT_EQ(Pier_WriteFile(file, "x", 1), -1);
    EXPECT_EQ(std::error_code(Pier_GetLastError(), std::system_category()), std::errc::no_space_on_device);
    EXPECT_EQ(Pier_CloseFile(file), 0);
}
#endif

} // namespace
