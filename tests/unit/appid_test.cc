#include "db/appid.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

namespace {

struct TableFree {
  void operator()(app_c6y_table *t) const { free(t); }
};

void parse(app_c6y_table *table, const std::string &text) {
  FILE *file = fmemopen(const_cast<char *>(text.data()), text.size(), "r");
  app_c6y_parse(table, file);
  fclose(file);
}

// "id=category" for every id with a category, then the counts.
std::string summary(const app_c6y_table &t) {
  std::string out;
  for (int id = 0; id < APP_ID_COUNT; id++)
    if (t.c6y[id]) out += std::to_string(id) + "=" + std::to_string(t.c6y[id]) + " ";
  return out + "max " + std::to_string(t.max_app_id) + " num " + std::to_string(t.num_app_id) + " c6y " +
         std::to_string(t.current_c6y);
}

TEST(AppId, TakesHeadersAndApplicationLines) {
  const struct { std::string text, summary; } cases[] = {
      {"#1,0,web\n80:http\n443:https\n", "80=1 443=1 max 443 num 2 c6y 1"},
      // Lines before the first header count with category 0; a later line for an id wins.
      {"5:early\n#2,0,x\n6:a\n#3,0,b\n6:b\n", "6=3 max 6 num 3 c6y 3"},
      // 127 is the last category; 128 and negative ones are no headers, nor one short of a field.
      {"#127,0,top\n1:a\n#128,0,no\n2:b\n#-1,0,no\n#4,0,\n#4,x,y\n3:c\n", "1=127 2=127 3=127 max 3 num 3 c6y 127"},
      // Ids up to 65535; others, words and blank lines skipped; no colon needed; CR LF and no last line end.
      {"#6,0,a\r\n65535:x\n65536:y\n-4:z\nhttp:80\n\n0:zero\n43 apps", "0=6 43=6 65535=6 max 65535 num 3 c6y 6"},
      {"#5,0,long\n" + std::string(100000, ' ') + "\n77:" + std::string(100000, 'x') + "\n", "77=5 max 77 num 1 c6y 5"},
      {"", "max 0 num 0 c6y 0"},
  };
  for (const auto &c : cases) {
    std::unique_ptr<app_c6y_table, TableFree> table(static_cast<app_c6y_table *>(calloc(1, sizeof(app_c6y_table))));
    parse(table.get(), "#9,0,a\n1:x\n");  // parsing clears the table first
    parse(table.get(), c.text);
    EXPECT_EQ(summary(*table), c.summary) << c.text.substr(0, 60);
  }
}

}  // namespace
