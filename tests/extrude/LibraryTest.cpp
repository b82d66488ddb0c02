// SPDX-License-Identifier: MIT
#include "extrude/Library.h"

#include "extrude/OrvFontList.h"
#include "host/CDynLinkLibrary.h"
#include "host/CWnd.h"
#include "platform/Sync.h"
#include "platform/posix/fonts/FontCatalog.h"
#include "tests/support/Clock.h"
#include "tests/support/FontFigures.h"
#include "tests/support/FontFile.h"
#include "tests/support/PrivateFonts.h"
#include "tests/support/StubFont.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <latch>
#include <thread>

namespace
{
using Names = std::vector<std::string>;

Names RegisteredNames()
{
    Names names;
    const OrvFontList& fonts = *GetFontList();
    for (POSITION position = fonts.GetHeadPosition(); position != nullptr;)
    {
        names.push_back(fonts.GetNext(position)->GetFullName().Text());
    }
    return names;
}

/// Waits for the object in another thread, with a timeout of 0, and returns the result of the wait.
DWORD WaitElsewhere(HANDLE object)
{
    DWORD result = WAIT_FAILED;
    std::thread([&] {
        result = WaitForSingleObject(object, 0);
        if (result == WAIT_OBJECT_0)
        {
            ReleaseMutex(object);
        }
    }).join();
    return result;
}

// Loading and unloading.

TEST(Library, TheGlyphMutexExistsFromTheStartAndNoThreadOwnsIt)
{
    ASSERT_NE(GetGlyphMutex(), nullptr);
    EXPECT_EQ(WaitElsewhere(GetGlyphMutex()), WAIT_OBJECT_0);
}

TEST(Library, AttachingAgainChangesNothing)
{
    const HANDLE mutex = GetGlyphMutex();
    const int modules = CDynLinkLibrary::GetCount();
    EXPECT_EQ(AttachLibrary(), 1);
    EXPECT_EQ(GetGlyphMutex(), mutex);
    EXPECT_EQ(CDynLinkLibrary::GetCount(), modules);
}

TEST(Library, DetachingDeletesTheFontsAndClosesTheMutex)
{
    const HANDLE mutex = GetGlyphMutex();
    const int modules = CDynLinkLibrary::GetCount();
    GetFontList()->InsertSorted(new StubFont("A"));
    EXPECT_EQ(DetachLibrary(), 1);
    EXPECT_TRUE(GetFontList()->IsEmpty());
    EXPECT_EQ(GetGlyphMutex(), nullptr);
    EXPECT_EQ(WaitElsewhere(mutex), WAIT_FAILED);
    EXPECT_EQ(CDynLinkLibrary::GetCount(), modules - 1);
    EXPECT_EQ(DetachLibrary(), 1);

    EXPECT_EQ(AttachLibrary(), 1);
    ASSERT_NE(GetGlyphMutex(), nullptr);
    EXPECT_EQ(WaitElsewhere(GetGlyphMutex()), WAIT_OBJECT_0);
    EXPECT_EQ(CDynLinkLibrary::GetCount(), modules);
}

// The registry.

/// Keeps every text that it is given.
struct StatusWindow : CWnd
{
    using CWnd::CWnd;
    void SetWindowText(LPCSTR text) override { texts.push_back(text); }
    Names texts;
};

const HWND someHandle = reinterpret_cast<HWND>(std::uintptr_t{8});

class LibraryRegistry : public testing::Test
{
protected:
    LibraryRegistry() : fonts({}) {}
    void SetUp() override { GetFontList()->RemoveAll(); }
    void TearDown() override { GetFontList()->RemoveAll(); }

    /// Installs the regular face of a family.
    void InstallRegular(const std::string& family)
    {
        InstallFace(family, "Regular", family + " Regular");
    }
    void InstallFace(const std::string& family, const std::string& style, const std::string& full)
    {
        fonts.Install(WriteFace(family, style, full));
    }

    /// Writes a face's file without installing it. Returns its path.
    std::string WriteFace(const std::string& family, const std::string& style,
                          const std::string& full)
    {
        const std::string path = fonts.Folder() + "/" + std::to_string(++written_) + ".ttf";
        FontFile file = FontFile::EdgeTest();
        file.Names(family, style, full, "Face" + std::to_string(written_));
        const bool bold = style.find("Bold") != std::string::npos;
        file.BoldAndItalic(bold, false).Weight(bold ? 700 : 400);
        file.Write(path);
        return path;
    }

    /// Sets the last change of the fonts' folder to the given number of seconds from now.
    /// Fontconfig compares that date, in whole seconds, with the time at which it listed the
    /// folder.
    void DateFontsFolder(int seconds) const
    {
        std::filesystem::last_write_time(
            fonts.Folder() + "/fonts",
            std::filesystem::file_time_type::clock::now() + std::chrono::seconds(seconds));
    }

    PrivateFonts fonts;

private:
    int written_ = 0;
};

TEST_F(LibraryRegistry, HasEveryStyleOfEveryFamilyInTheOrderOfTheNames)
{
    InstallRegular("Beta");
    InstallFace("Beta", "Bold", "Beta Bold");
    InstallRegular("Alpha");
    EXPECT_EQ(CreateFontList(0, nullptr), 1);
    EXPECT_EQ(RegisteredNames(), (Names{"Alpha Regular", "Beta Bold", "Beta Regular"}));
}

TEST_F(LibraryRegistry, FacesWhoseNamesDifferInCaseAreBothListedUpperCaseFirst)
{
    InstallRegular("case");
    InstallRegular("Case");
    CreateFontList(0, nullptr);
    EXPECT_EQ(RegisteredNames(), (Names{"Case Regular", "case Regular"}));
}

TEST_F(LibraryRegistry, ASecondCallLeavesTheRegistryAsItWas)
{
    InstallRegular("Beta");
    InstallRegular("Alpha");
    CreateFontList(0, nullptr);
    const Names names = RegisteredNames();
    const OrvFont* const first = GetFontList()->GetHead();
    EXPECT_EQ(CreateFontList(0, nullptr), 1);
    EXPECT_EQ(RegisteredNames(), names);
    EXPECT_EQ(GetFontList()->GetHead(), first);

    // The next call adds a face that was installed after the second one.
    InstallRegular("Aleph");
    CreateFontList(0, nullptr);
    EXPECT_EQ(RegisteredNames(), (Names{"Aleph Regular", "Alpha Regular", "Beta Regular"}));
}

TEST_F(LibraryRegistry, ASecondCallAddsFacesInstalledSinceTheFirst)
{
    InstallRegular("Beta");
    const std::string alpha = WriteFace("Alpha", "Regular", "Alpha Regular");
    CreateFontList(0, nullptr);
    ASSERT_EQ(RegisteredNames(), Names{"Beta Regular"});
    const auto before = posix::CurrentCatalog();
    CreateFontList(0, nullptr);
    EXPECT_EQ(posix::CurrentCatalog(), before)
        << "the fonts were listed again, although no font file has changed";

    fonts.Place(alpha);
    const ClockAhead clock(2);
    DateFontsFolder(1);
    CreateFontList(0, nullptr);
    EXPECT_EQ(RegisteredNames(), (Names{"Alpha Regular", "Beta Regular"}));
}

TEST_F(LibraryRegistry, AFontInUseKeepsItsFaceAfterTheFileIsRemoved)
{
    InstallRegular("Beta");
    const std::string place = fonts.Place(WriteFace("Alpha", "Regular", "Alpha Regular"));
    ReloadFonts();
    CreateFontList(0, nullptr);
    const SelectedFont alpha("Alpha", -1000);
    ASSERT_EQ(alpha.Full(), "Alpha Regular");
    const std::vector<BYTE> outline = alpha.Outline('C');
    EXPECT_FALSE(outline.empty());

    std::filesystem::remove(place);
    const ClockAhead clock(2);
    DateFontsFolder(1);
    CreateFontList(0, nullptr);
    EXPECT_EQ(FullNames(EnumerateFonts(nullptr)), Names{"Beta Regular"});
    EXPECT_EQ(alpha.Full(), "Alpha Regular");
    EXPECT_EQ(alpha.Outline('C'), outline);
    // The registry still has the removed face. A new font of that family gets another face.
    EXPECT_EQ(RegisteredNames(), (Names{"Alpha Regular", "Beta Regular"}));
    EXPECT_EQ(SelectedFont("Alpha", -1000).Full(), "Beta Regular");
}

TEST_F(LibraryRegistry, FacesEnterAnUnsortedListAtThePlacesThatInsertSortedChooses)
{
    for (const char* const family : {"Alpha", "Beta", "Delta"})
    {
        InstallRegular(family);
    }
    OrvFontList& list = *GetFontList();
    list.AddTail(new StubFont("Gamma"));
    list.AddTail(new StubFont("Beta"));
    CreateFontList(0, nullptr);
    // Each face stands before the first face whose name sorts after its own.
    EXPECT_EQ(RegisteredNames(),
              (Names{"Alpha Regular", "Beta Regular", "Delta Regular", "Gamma", "Beta"}));
}

TEST_F(LibraryRegistry, OfTwoFacesWithTheSameFullNameTheFirstEnumeratedIsKept)
{
    InstallFace("Bb", "Regular", "Same Name");
    InstallFace("Aa", "Regular", "Same Name");
    CreateFontList(0, nullptr);
    ASSERT_EQ(RegisteredNames(), Names{"Same Name"});
    EXPECT_STREQ(GetFontList()->GetHead()->GetEnumLogFont()->elfLogFont.lfFaceName, "Aa");
}

TEST_F(LibraryRegistry, FacesThatAreNotTrueTypeNeverEnter)
{
    const std::string path = fonts.Folder() + "/bitmap.bdf";
    std::ofstream(path) << "STARTFONT 2.1\n"
                           "FONT -test-Bitmap Face-medium-r-normal--8-80-75-75-c-80-iso8859-1\n"
                           "SIZE 8 75 75\nFONTBOUNDINGBOX 8 8 0 0\nSTARTPROPERTIES 3\n"
                           "FAMILY_NAME \"Bitmap Face\"\nFONT_ASCENT 8\nFONT_DESCENT 0\n"
                           "ENDPROPERTIES\nCHARS 1\nSTARTCHAR A\nENCODING 65\nSWIDTH 500 0\n"
                           "DWIDTH 8 0\nBBX 8 8 0 0\nBITMAP\nFF\nFF\nFF\nFF\nFF\nFF\nFF\nFF\n"
                           "ENDCHAR\nENDFONT\n";
    fonts.Install(path);
    InstallRegular("Alpha");
    // The enumeration of families gives both fonts.
    const std::vector<EnumeratedFont> families = EnumerateFonts(nullptr);
    ASSERT_EQ(families.size(), 2u);
    EXPECT_EQ(families[0].type, TRUETYPE_FONTTYPE);
    EXPECT_NE(families[1].type & TRUETYPE_FONTTYPE, TRUETYPE_FONTTYPE);
    CreateFontList(0, nullptr);
    EXPECT_EQ(RegisteredNames(), Names{"Alpha Regular"});
}

TEST_F(LibraryRegistry, WithNoFontsInstalledTheRegistryIsEmpty)
{
    EXPECT_EQ(CreateFontList(1, nullptr), 1);
    EXPECT_TRUE(GetFontList()->IsEmpty());
}

TEST_F(LibraryRegistry, ForDejaVuAndLiberationTheRegistryEqualsTheReferences)
{
    for (const std::string& file : FontFiles())
    {
        fonts.Install(file);
    }
    CreateFontList(0, nullptr);
    EXPECT_EQ(RegisteredNames(), RegistryNames());
}

TEST_F(LibraryRegistry, TheStatusWindowShowsEveryFaceEvenThoseAlreadyRegistered)
{
    InstallRegular("Beta");
    InstallRegular("Alpha");
    StatusWindow window(someHandle);
    CreateFontList(1, &window);
    const Names shown = {"Adding Font - Alpha Regular", "Adding Font - Beta Regular"};
    EXPECT_EQ(window.texts, shown);
    window.texts.clear();
    CreateFontList(1, &window);
    EXPECT_EQ(window.texts, shown);
}

TEST_F(LibraryRegistry, ThreadsThatFillItTogetherEachFindEveryFaceAndUseTheirOwnWindow)
{
    Names names;
    Names texts;
    for (const char* const family : {"A", "B", "C", "D", "E", "F"})
    {
        InstallRegular(family);
        names.push_back(std::string(family) + " Regular");
        texts.push_back("Adding Font - " + names.back());
    }
    constexpr int rounds = 20;
    constexpr int threadCount = 4;
    for (int round = 0; round < rounds; ++round)
    {
        std::latch start(threadCount);
        std::vector<std::thread> threads;
        for (int i = 0; i < threadCount; ++i)
        {
            threads.emplace_back([&] {
                StatusWindow window(someHandle);
                start.arrive_and_wait();
                EXPECT_EQ(CreateFontList(1, &window), 1);
                EXPECT_EQ(RegisteredNames(), names);
                EXPECT_EQ(window.texts, texts);
            });
        }
        for (std::thread& thread : threads)
        {
            thread.join();
        }
        GetFontList()->RemoveAll();
    }
}

TEST_F(LibraryRegistry, NothingIsShownWithoutTheFlagAWindowAndItsHandle)
{
    InstallRegular("Alpha");
    StatusWindow window(someHandle);
    CreateFontList(0, &window);
    EXPECT_EQ(window.texts, Names{});
    GetFontList()->RemoveAll();

    StatusWindow handleless;
    EXPECT_EQ(CreateFontList(1, &handleless), 1);
    EXPECT_EQ(handleless.texts, Names{});
    GetFontList()->RemoveAll();

    EXPECT_EQ(CreateFontList(1, nullptr), 1);
    EXPECT_EQ(RegisteredNames(), Names{"Alpha Regular"});
}
}  // namespace
