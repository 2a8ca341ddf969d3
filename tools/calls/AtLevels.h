// The processor levels by their names.
#pragma once

#include <string>
#include <vector>

// Those that the library has code for and this processor runs, oldest first; none where a program cannot choose.
std::vector<std::string> levels();

// The level that the library runs at, and another one from now on.
std::string currentLevel();
void useLevel(const std::string& name);

// Whether leavesArrays is the library's; a shared library keeps to what it was built with.
bool choosesArrays();
