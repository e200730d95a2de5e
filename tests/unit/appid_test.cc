#include "db/appid.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

namespace {

struct TableFree {
  void operator()(app_c6y_table *t) const { free(t); }
};
using Table = std::unique_ptr<app_c6y_table, TableFree>;

Table parse(const std::string &text) {
  Table table(static_cast<app_c6y_table *>(calloc(1, sizeof(app_c6y_table))));
  FILE *file = fmemopen(const_cast<char *>(text.data()), text.size(), "r");
  app_c6y_parse(table.get(), file);
  fclose(file);
  return table;
}

// "id=category" for every id with a category, in ascending order.
std::string assigned(const app_c6y_table &t) {
  std::string out;
  for (int id = 0; id < APP_ID_COUNT; id++)
    if (t.c6y[id]) out += std::to_string(id) + "=" + std::to_string(t.c6y[id]) + " ";
  return out;
}

TEST(AppIdParser, TakesHeadersAndApplicationLines) {
  const struct {
    const char *text;
    const char *assigned;
    int max_app_id, num_app_id, current_c6y;
  } cases[] = {
      {"#1,0,web\n80:http\n443:https\n", "80=1 443=1 ", 443, 2, 1},
      // Lines before the first header are counted with category 0, never assigned.
      {"5:early\n#2,0,x\n6:late\n", "6=2 ", 6, 2, 2},
      // A later line for the same id wins; duplicates count again.
      {"#1,0,a\n7:x\n#3,0,b\n7:y\n", "7=3 ", 7, 2, 3},
      // Category 127 is the last one taken; 128, 200 and negative ones are not headers.
      {"#127,0,top\n1:a\n#128,0,no\n2:b\n#-1,0,no\n3:c\n#200,0,no\n", "1=127 2=127 3=127 ", 3, 3, 127},
      // A header needs all three fields, the name at least one character.
      {"#4,0\n9:a\n#4,0,\n10:b\n#4,x,y\n11:c\n#4,0,n\n12:d\n", "12=4 ", 12, 4, 4},
      // A name longer than 31 characters is no error.
      {"#9,1,aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa\n1:x\n", "1=9 ", 1, 1, 9},
      // Ids: 65535 is the last one; 65536, negatives, words and empty lines are skipped.
      {"#1,0,a\n65535:x\n65536:y\n-4:z\nhttp:80\n\n  \n0:zero\n", "0=1 65535=1 ", 65535, 2, 1},
      // The colon is not needed, nor anything after the number.
      {"#6,0,a\n42\n43 apps\n", "42=6 43=6 ", 43, 2, 6},
      // A last line without a line end, and carriage returns, still count.
      {"#8,0,a\r\n15:x\r\n16:y", "15=8 16=8 ", 16, 2, 8},
      // Categories are stored as their low byte (within 0..127 nothing is lost).
      {"#0,0,none\n3:x\n", "", 3, 1, 0},
      {"", "", 0, 0, 0},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.text);
    Table t = parse(c.text);
    EXPECT_EQ(assigned(*t), c.assigned);
    EXPECT_EQ(t->max_app_id, c.max_app_id);
    EXPECT_EQ(t->num_app_id, c.num_app_id);
    EXPECT_EQ(t->current_c6y, c.current_c6y);
  }
}

TEST(AppIdParser, ReadsLinesOfAnyLength) {
  std::string text = "#5,0,long\n" + std::string(100000, ' ') + "\n77:" + std::string(100000, 'x') + "\n";
  Table t = parse(text);
  EXPECT_EQ(assigned(*t), "77=5 ");
}

TEST(AppIdParser, ParsingClearsTheTableFirst) {
  Table t = parse("#1,0,a\n1:x\n");
  FILE *file = fmemopen(const_cast<char *>("2:y\n"), 4, "r");
  app_c6y_parse(t.get(), file);
  fclose(file);
  EXPECT_EQ(assigned(*t), "");
  EXPECT_EQ(t->num_app_id, 1);
  EXPECT_EQ(t->max_app_id, 2);
}

}  // namespace
