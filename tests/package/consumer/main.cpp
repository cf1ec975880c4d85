#include <iostream>

#include <vexel/vexel.h>

int main() {
  vexel::QueryBuilder q(nullptr);
  q.SELECT({vexel::col("a")}).FROM(vexel::tab("t"));
  std::cout << q.tosql() << "\n";
  return 0;
}
