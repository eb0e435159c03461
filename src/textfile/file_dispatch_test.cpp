#include "textfile/file_dispatch.h"

#include "base/safe_file.h"
#include "tests/support/temporary_folder.h"
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

bool write_names(const store::FileContext& context, const store::OutputOptions& options, base::TextOutput& out) {
  for (int i = 1; options.waypoints && i <= context.store.waypoint_count(); ++i) {
    const store::ItemRecord waypoint = context.store.waypoint(i);
    out += std::string(waypoint.ident.view()) + "\n";
    if (waypoint.ident == "REFUSE") {
      context.front_end.message_box("write_names", "No.");
      return false;
    }
  }
  return true;
}

// In the order in which first lines are tried.
constexpr std::array kFormats{recognised(16, "an OziExplorer track file", ".PLT", contains<"OziExplorer Track">),
                              recognised(18, "an OziExplorer route file", ".RTE", contains<"OziExplorer Route">),
                              recognised(10, "a comma-separated waypoint file", ".FWP", recognises_comma_waypoints),
                              recognised(14, "a file of comma-separated values", ".CSV", nullptr),
                              FileFormat{.name = "an IGC track file", .output_extension = ".IGC"},
                              // Holds the names of waypoints alone, and not more than one.
                              FileFormat{.name = "a list of names",
                                         .title = "A list",
                                         .output_extension = ".LST",
                                         .write = write_names,
                                         .keeps = {.waypoints = store::kKeepsItems | store::kKeepsNames}},
                              FileFormat{.code = kNativeText,
                                         .name = "a text file",
                                         .title = "Native text",
                                         .output_extension = ".TXT",
                                         .recognises = recognises_native_text,
                                         .read = read_native_text,
                                         .write = write_native_text,
                                         .keeps_by_choice = native_text_keeps}};

class Dispatch : public TextFileTest {
 protected:
  std::filesystem::path file(const std::string& name, std::string_view contents) {
    EXPECT_EQ(base::save_file(folder / name, contents), "");
    return folder / name;
  }
  std::string contents_of(const std::string& name) {
    std::string contents, reason;
    return base::load_file(folder / name, contents, reason) ? contents : "(" + reason + ")";
  }

  const support::TemporaryFolder temporary;
  const std::filesystem::path folder = temporary.path();
  FileDispatch dispatch{kFormats, context};
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
  EXPECT_THAT(front_end.lines[1], testing::MatchesRegex("reading: .*two.txt\\w\\w\\w \\w\\w\\w .* 20.."));
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

TEST_F(Dispatch, ASaveSaysWhatItsFormatCannotHold) {
  EXPECT_TRUE(dispatch.do_input(file("store.txt",
                                     "Version 2\n"
                                     "W  A               N54 19.5000 E010 08.7000 Sat Jun 01 12:00:00 2002 Fuel\n"
                                     "W  B               N54 19.5000 E010 08.7000 Sun Dec 31 00:00:00 1989 Water\n"
                                     "R  00 Out\n"
                                     "W  C               N54 19.5000 E010 08.7000\n"
                                     "E  00\n"
                                     "N  New Track Log Start - River,Red,2\n"
                                     "T  N54 19.5000 E010 08.7000 Sat Jun 01 12:00:00 2002 ;    12.00;      1e25;\n")));
  EXPECT_TRUE(dispatch.save(folder / "out.lst", options));
  EXPECT_EQ(front_end.lines[3], "A list keeps no routes: 1 route not written");
  EXPECT_EQ(front_end.lines[4], "A list keeps no tracks: 1 track point not written");
  EXPECT_EQ(front_end.lines[5], "A list keeps no time, comment: 1 time, 2 comments not written");
  EXPECT_EQ(front_end.lines.count(6), 0u);
  // What the user does not want written is not lost, and what the format holds is not spoken of.
  front_end.lines.clear();
  options.tracks = options.routes = false;
  EXPECT_TRUE(dispatch.save(folder / "out.lst", options));
  EXPECT_EQ(front_end.lines[3], "A list keeps no time, comment: 1 time, 2 comments not written");
  options = {};
  options.version = 1;
  EXPECT_TRUE(dispatch.save(folder / "out.txt", options));
  EXPECT_EQ(front_end.lines[3],
            "Native text keeps no track name, altitude, track colour or style for tracks: 1 track name, 1 altitude, 1 "
            "track colour or style not written");
}

TEST_F(Dispatch, TheUserMayChooseTheKindsOrCancel) {
  EXPECT_TRUE(dispatch.do_input(file("two.txt", kTwoWaypoints)));
  settings.SelectItemsToSave = 1;
  front_end.not_chosen = {"Waypoints"};
  EXPECT_TRUE(dispatch.save(folder / "out.lst", options));
  EXPECT_THAT(front_end.questions,
              ElementsAre(Pair("Items to save", "Waypoints+Routes+Tracks+Proximity waypoints+Events+")));
  EXPECT_EQ(contents_of("out.lst"), "");
  options.kinds_given = true;
  EXPECT_TRUE(dispatch.save(folder / "out.lst", options));
  EXPECT_EQ(contents_of("out.lst"), base::with_line_ends("A\nb\n"));
  options.kinds_given = false;
  front_end.answer = false;
  EXPECT_FALSE(dispatch.save(folder / "never.lst", options));
  EXPECT_FALSE(std::filesystem::exists(folder / "never.lst"));
}

TEST_F(Dispatch, AWriterThatRefusesLeavesTheOldFileAndNoOther) {
  EXPECT_TRUE(dispatch.do_input(file("bad.txt", "W  REFUSE          N54 19.5000 E010 08.7000\n")));
  const std::filesystem::path old = file("old.lst", "old");
  EXPECT_FALSE(dispatch.save(old, options));
  EXPECT_EQ(contents_of("old.lst"), "old");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 2);
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
