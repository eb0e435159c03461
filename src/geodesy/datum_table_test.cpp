#include "geodesy/datum_table.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <tuple>

#include "base/safe_file.h"
#include "geodesy/built_in_datums.h"
#include "tests/support/recording_front_end.h"

namespace geodesy {
namespace {

namespace fs = std::filesystem;

class UserDatums : public testing::Test {
 protected:
  UserDatums() { fs::create_directories(folder / "second"); }
  ~UserDatums() override { fs::remove_all(folder); }

  static void write(const fs::path& path, std::string_view text) { std::ofstream(path, std::ios::binary) << text; }
  int load(std::string_view text) {
    write(folder / "pelorixdatums.txt", text);
    const std::array directories{folder};
    return table.load_user_datums(directories, "pelorix");
  }
  [[nodiscard]] std::size_t user_rows() const { return table.names().size() - kBuiltInDatums.size(); }

  const fs::path folder = fs::path(testing::TempDir()) / testing::UnitTest::GetInstance()->current_test_info()->name();
  DatumTable table;
  support::RecordingFrontEnd front_end;
};

TEST_F(UserDatums, RowsAreReadHoweverTheyAreWritten) {
  struct Case {
    std::string_view text;
    DatumEntry row;
  };
  for (const auto& [text, row] : {
           Case{"ordnance_survey_of_great_britain_36,1.5,0.25,-1,2,3\n",  // in the built-in one's place
                {"Ordnance_Survey_of_Great_Britain_36", 1.5, 0.25, -1, 2, 3}},
           Case{"a,1,2,3,4,5\r\nb,1,2,3,4,6\r\n", {"b", 1, 2, 3, 4, 6}},
           Case{"x,abc,nan,,--5,7 m\n", {"x", 0, 0, 0, 0, 7}},
           Case{"x,0,0,65537,-32769,99999999999999999999\n", {"X", 0, 0, 1, 32767, 0}},  // 16 bits wrap
           Case{"good ,1,2,3,4,5  ", {"GOOD ", 1, 2, 3, 4, 5}},  // blanks before the comma belong to the name
       }) {
    ASSERT_EQ(load(text), 1) << text;
    const DatumEntry* const found = table.find(row.name);
    ASSERT_NE(found, nullptr) << text;
    EXPECT_EQ(std::tie(found->da, found->df, found->dx, found->dy, found->dz),
              std::tie(row.da, row.df, row.dx, row.dy, row.dz))
        << text;
  }
}

TEST_F(UserDatums, OnlyLinesWithFiveCommasThatAreNoCommentsCount) {
  ASSERT_EQ(load("four,1,2,3,4\nsix,1,2,3,4,5,6\n;five,1,2,3,4,5\n  ; x,1,2,3,4,5\n\n   good,1,2,3,4,5\n"), 1);
  EXPECT_EQ(user_rows(), 1u);
  EXPECT_EQ(table.names().front(), "good");
}

TEST_F(UserDatums, ARowNamedAsTheEndRowHidesAllBehindIt) {
  ASSERT_EQ(load("a,1,2,3,4,5\nfinisxx,0,0,0,0,0\nb,1,2,3,4,5\n"), 1);
  EXPECT_EQ(user_rows(), 1u);
  EXPECT_EQ(table.find("b"), nullptr);
  EXPECT_EQ(table.find("FINISXX"), nullptr);
  EXPECT_NE(table.find("Zanderij"), nullptr);
}

// Deliberate : the line is cut at 254 characters, and the rest is a line of its own.
TEST_F(UserDatums, ALongLineIsTakenInPiecesOf254Characters) {
  ASSERT_EQ(load(";" + std::string(253, '-') + "a,1,2,3,4,5\n"), 1);
  EXPECT_EQ(table.names().front(), "a");
  ASSERT_EQ(load(";" + std::string(254, '-') + ",1,2,3,4,5\n"), 1);
  EXPECT_EQ(table.names().front(), "-");
}

TEST_F(UserDatums, NamesSurviveTheGrowthOfTheTable) {
  std::string text;
  for (int i = 0; i < 2000; ++i) text += "n" + std::to_string(i) + ",0,0," + std::to_string(i) + ",0,0\n";
  ASSERT_EQ(load(text), 1);
  EXPECT_EQ(table.find("n0")->dx, 0);
  EXPECT_EQ(table.find("N1999")->dx, 1999);
}

TEST_F(UserDatums, TheFirstFolderThatHasTheFileIsTaken) {
  write(folder / "second" / "pelorixdatums.txt", "second,0,0,0,0,0\n");
  const std::array directories{folder, folder / "second"};
  EXPECT_EQ(table.load_user_datums(directories, ""), 1);
  EXPECT_NE(table.find("second"), nullptr);
  write(folder / "pelorixdatums.txt", "first,0,0,0,0,0\n");
  EXPECT_EQ(table.load_user_datums(directories, ""), 1);
  EXPECT_NE(table.find("first"), nullptr);
  EXPECT_EQ(table.find("second"), nullptr);
}

TEST_F(UserDatums, WithoutAFileOrWithAFolderOfThatNameOnlyTheBuiltInDatumsAreThere) {
  const std::array directories{folder};
  EXPECT_EQ(table.load_user_datums(directories, "C:\\programs\\pelorix.exe"), 0);
  fs::create_directory(folder / "pelorixdatums.txt");
  EXPECT_EQ(table.load_user_datums(directories, ""), 0);
  EXPECT_EQ(user_rows(), 0u);
}

TEST_F(UserDatums, TheFileBesideTheProgramIsTakenLast) {
  fs::create_directories((folder / "bin\\pelorix.exe").parent_path());  // two folders where a backslash parts them
  write(folder / "bin\\pelorixdatums.txt", "beside,0,0,0,0,0\n");
  EXPECT_EQ(table.load_user_datums({}, (folder / "bin\\pelorix.exe").string()), 1);
  EXPECT_NE(table.find("beside"), nullptr);
}

TEST_F(UserDatums, TheSavedListIsReadByPeople) {
  const fs::path path = folder / "list";
  ASSERT_TRUE(save_internal_datum_list(path, front_end));
  EXPECT_EQ(front_end.lines[1], "Internal datums saved to: " + path.string());
  std::string text;
  std::string reason;
  ASSERT_TRUE(base::load_file(path, text, reason));
  EXPECT_THAT(text, testing::StartsWith(base::with_line_ends(
                        "Datum                                         da,           df,   dx,   dy,   dz\n"
                        "ARC-1950_mean, ----------------------   -112.145, -0.547507140, -143,  -90, -294\n"
                        "ARC-1960_mean, ----------------------   -112.145, -0.547507140, -160,   -8, -300\n")));
  EXPECT_THAT(text, testing::HasSubstr("\nOrdnance_Survey_of_Great_Britain_36,     573.604,  0.119600230,"));
  EXPECT_THAT(text, testing::HasSubstr("\nProvisional_South_American_1956_mean,   -251.000, -0.141927020,"));
  EXPECT_EQ(std::ranges::count(text, '\n'), 164);
}

TEST_F(UserDatums, AListThatCannotBeSavedIsReported) {
  EXPECT_FALSE(save_internal_datum_list(folder / "no such folder" / "list", front_end));
  EXPECT_THAT(front_end.boxes, testing::ElementsAre(testing::Pair("Saving Datum list", "Error saving datum list")));
  EXPECT_THAT(front_end.lines[3], testing::HasSubstr("no such folder"));
  EXPECT_EQ(front_end.lines.count(1), 0u);
}

}  // namespace
}  // namespace geodesy
