// Prints one statement in the three dialects.
#include <iostream>

#include <vexel/vexel.h>

int main() {
  vexel::QueryBuilder q(nullptr);
  std::cout << q.tosql() << "\n";
  return 0;
}
