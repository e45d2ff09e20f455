// The start-up floor: a C++ program linked like any other that returns at once.
#include <iostream>

int main() {
  std::cout.flush();
  return 0;
}
