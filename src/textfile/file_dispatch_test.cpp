#include "textfile/file_dispatch.h"

#include "base/safe_file.h"
#include "tests/support/stepping_clock.h"
#include "tests/support/text_file_fixture.h"

namespace textfile {
namespace {

using support::TextFileTest;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;
using testing::SizeIs;
using testing::StartsWith;

template <std::size_t N>
struct Literal {
  constexpr Literal(const char (&text)[N]) { std::copy_n(text, N, characters); }  // NOLINT: a text is what it holds
  char characters[N];
};
template <Literal text>
bool contains(std::string_view line) {
  return line.find(text.characters) != std::string_view::npos;
}

constexpr FileFormat recognised(int code, std::string_view name, std::string_view extension,
                                bool (*recognises)(std::string_view)) {
  return {.code = code,
          .name = name,
          .input_extension = extension,
          .output_extension = extension,
          .recognises = recognises};
}

// In the order in which first lines are tried.
constexpr std::array kFormats{recognised(16, "an OziExplorer track file", ".PLT", contains<"OziExplorer Track">),
                              recognised(18, "an OziExplorer route file", ".RTE", contains<"OziExplorer Route">),
                              recognised(10, "a comma-separated waypoint file", ".FWP", recognises_comma_waypoints),
                              recognised(14, "a file of comma-separated values", ".CSV", nullptr),
                              FileFormat{.name = "an IGC track file", .output_extension = ".IGC"},
                              FileFormat{.code = kNativeText,
                                         .name = "a text file",
                                         .output_extension = ".TXT",
                                         .recognises = recognises_native_text,
                                         .read = read_native_text,
                                         .write = write_native_text}};

class Dispatch : public TextFileTest {
 protected:
  Dispatch() {
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
  }
  ~Dispatch() override { std::filesystem::remove_all(folder); }

  std::filesystem::path file(const std::string& name, std::string_view contents) {
    EXPECT_EQ(base::save_file(folder / name, contents), "");
    return folder / name;
  }
  std::string contents_of(const std::string& name) {
    std::string contents, reason;
    return base::load_file(folder / name, contents, reason) ? contents : "(" + reason + ")";
  }

  support::SteppingClock clock;
  const std::filesystem::path folder =
      std::filesystem::temp_directory_path() /
      (std::string("textfile_test_") + testing::UnitTest::GetInstance()->current_test_info()->name());
  FileDispatch dispatch{kFormats, store::FileContext{store, shift, datums, settings, front_end, clock, {}}};
};

constexpr std::string_view kTwoWaypoints =
    "W  b               N54 19.5000 E010 08.7000\nW  A               N54 19.5000 E010 08.7000\n";

TEST_F(Dispatch, TheTypeIsToldByTheExtensionOrElseByTheFirstLine) {
  struct Case {
    std::string name;
    std::string_view contents;
    int type;
  };
  for (const Case& c :
       {Case{"route.txt", "OziExplorer Route File Version 1.0\n", 18}, Case{"noextension", "W  HOME\n", kNativeText},
        Case{"anything.csv", "W  HOME\n", 14}, Case{"upper.CsV", "", 14}, Case{"commas.dat", "Home,1,2,3,4\n", 10},
        Case{"lowercase.dat", "home,1,2,3,4\n", kUnknownType}, Case{"comment.dat", "#a,b,c,d,e\n", kUnknownType},
        Case{"five.dat", "W,1,2,3,4,5\n", kNativeText},
        Case{"late.dat", "\r\n\n\nOziExplorer Track Point File\r\n", 16}, Case{"proximity", "P  HOME\n", kNativeText},
        Case{"zone", "Z 5\n", kNativeText}, Case{"blank", " x\n", kNativeText}, Case{"igc.igc", "AXXX\n", kUnknownType},
        Case{"empty.txt", "", kUnknownType}, Case{"lines.txt", "\n\n\n", kUnknownType},
        Case{"long.txt", std::string_view("W\0W", 3), kNativeText}}) {
    EXPECT_EQ(dispatch.input_type(file(c.name, c.contents)), c.type) << c.name;
  }
  EXPECT_EQ(dispatch.input_type(folder / "missing.txt"), kCannotOpen);
  EXPECT_EQ(dispatch.input_type(folder / "missing.csv"), 14);
  EXPECT_EQ(dispatch.input_type(folder), kCannotOpen);
}

TEST_F(Dispatch, AFileIsReadAnnouncedAndSortedWhereThatIsWanted) {
  const std::filesystem::path path = file("two.txt", kTwoWaypoints);
  EXPECT_TRUE(dispatch.do_input(path));
  EXPECT_EQ(store.waypoint(1).ident, "A");
  EXPECT_THAT(front_end.boxes, IsEmpty());
  // Deliberate : nothing between name and date.
  EXPECT_THAT(front_end.lines[1], testing::MatchesRegex("reading: .*two.txt[A-Z][a-z][a-z] [A-Z][a-z][a-z] .* 20.."));
  EXPECT_GT(front_end.title_refreshes, 0);
  settings.SA_SortAfterInput = 0;
  store.clear_all();
  EXPECT_TRUE(dispatch.do_input(path));
  EXPECT_EQ(store.waypoint(1).ident, "b");
}

TEST_F(Dispatch, WhatCannotBeReadIsSaidInOneBox) {
  struct Case {
    std::filesystem::path path;
    std::string text;
  };
  for (const Case& c :
       {Case{folder / "missing.txt", "Unable to open file: " + (folder / "missing.txt").string()},
        Case{file("strange.dat", "home\n"), "Unknown input file type: " + (folder / "strange.dat").string()},
        Case{file("bad.txt", "W  nothing\n"),
             "No Valid input records in file: '" + (folder / "bad.txt").string() + "'"},
        Case{file("a.plt", kTwoWaypoints),
             (folder / "a.plt").string() + " is an OziExplorer track file: this type of file cannot be read."}}) {
    front_end.boxes.clear();
    EXPECT_FALSE(dispatch.do_input(c.path));
    EXPECT_THAT(front_end.boxes, ElementsAre(Pair("do_input", c.text)));
    EXPECT_TRUE(store.empty());
  }
}

TEST_F(Dispatch, SavingChoosesTheWriterByExtensionAndNeverPutsTextIntoAnotherTypesFile) {
  settings.SA_SortAfterInput = 0;
  EXPECT_TRUE(dispatch.do_input(file("two.txt", kTwoWaypoints)));
  for (const std::string name : {"out.txt", "OUT.TXT", "unlisted.xyz", "noextension"}) {
    EXPECT_TRUE(dispatch.save(folder / name, options)) << name;
    EXPECT_EQ(front_end.lines[1], "File " + (folder / name).string() + " saved");
    EXPECT_THAT(contents_of(name), StartsWith("Version 2"));
  }
  EXPECT_LT(contents_of("out.txt").find("W  A"), contents_of("out.txt").find("W  b"));
  for (const std::string name : {"out.igc", "out.Plt"}) {
    front_end.boxes.clear();
    EXPECT_FALSE(dispatch.save(folder / name, options)) << name;
    EXPECT_THAT(front_end.boxes, ElementsAre(Pair("open_output", HasSubstr("cannot be written"))));
    EXPECT_FALSE(std::filesystem::exists(folder / name));
  }
}

TEST_F(Dispatch, EmptyStoresAreNotSavedAsTxtAndGiveAHeaderUnderAnotherName) {
  for (const std::string name : {"new.txt", "NEW.TXT", ".txt"}) {
    front_end.lines.clear();
    EXPECT_FALSE(dispatch.save(folder / name, options)) << name;
    EXPECT_EQ(front_end.lines[1], "Save aborted -- No .txt information to save!");
    EXPECT_FALSE(std::filesystem::exists(folder / name));
  }
  EXPECT_TRUE(dispatch.save(folder / "new.dat", options));
  EXPECT_THAT(contents_of("new.dat"), HasSubstr("M DMM"));
}

TEST_F(Dispatch, ASaveThatFailsLeavesTheOldFileAndSaysWhatToDo) {
  EXPECT_TRUE(dispatch.do_input(file("two.txt", kTwoWaypoints)));
  const std::filesystem::path nowhere = folder / "two.txt" / "out.txt";
  EXPECT_FALSE(dispatch.save(nowhere, options));
  EXPECT_THAT(front_end.boxes, ElementsAre(Pair("open_output", "Can't open output file " + nowhere.string())));
  EXPECT_THAT(front_end.lines[3], HasSubstr("choose another folder"));
  EXPECT_EQ(contents_of("two.txt"), kTwoWaypoints);
  EXPECT_FALSE(dispatch.save(folder, options));
}

TEST_F(Dispatch, AnUnknownOutputDatumIsSaidAndTheFileNamesWgs84) {
  EXPECT_TRUE(dispatch.do_input(file("two.txt", kTwoWaypoints)));
  options.datum = "Atlantis";
  EXPECT_TRUE(dispatch.save(folder / "out.txt", options));
  EXPECT_THAT(front_end.boxes, SizeIs(1));
  EXPECT_THAT(contents_of("out.txt"), HasSubstr("\nD WGS-84"));
}

}  // namespace
}  // namespace textfile
