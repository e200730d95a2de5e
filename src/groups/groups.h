// Entries of the command groups, called with the vector from the group word.
#pragma once

int mon_main(int argc, char **argv);
