// The function name every log line starts with, from each compiler's
// signature text.
#include <gtest/gtest.h>

#include "internal/Log.h"

namespace {

TEST(LogName, QualifiedNameFromSignatures) {
  const struct {
    const char* signature;
    const char* want;
  } cases[] = {
      {"bool vexel::QueryBuilder::Execute()", "vexel::QueryBuilder::Execute"},
      // Clang keeps the "&" of a reference return type against the name.
      {"vexel::UpdateBuilder &vexel::UpdateBuilder::SET(const vexel::col &)",
       "vexel::UpdateBuilder::SET"},
      {"vexel::SQLUpdate *vexel::UpdateBuilder::impl() const", "vexel::UpdateBuilder::impl"},
      {"vexel::QueryBuilder::QueryBuilder(const std::shared_ptr<tessel::CConnect>&)",
       "vexel::QueryBuilder::QueryBuilder"},
      {"std::string vexel::QueryBuilder::tosql() const", "vexel::QueryBuilder::tosql"},
      {"(anonymous namespace)::Values vexel::JSON_SET(const vexel::col &, std::string)",
       "vexel::JSON_SET"},
      {"std::map<tessel::DBTYPE, vexel::SQLValue> vexel::JSON_SET(const vexel::col&)",
       "vexel::JSON_SET"},
      {"void vexel::(anonymous namespace)::helper(int)", "vexel::(anonymous namespace)::helper"},
      {"T vexel::f(T) [with T = void (*)(int)]", "vexel::f"},
      {"bool __cdecl vexel::PGQuery::Execute(void)", "vexel::PGQuery::Execute"},
      {"main", "main"},
      {"", ""},
  };
  for (const auto& c : cases) EXPECT_EQ(vexel::internal::qualified_name(c.signature), c.want);
  EXPECT_EQ(vexel::internal::qualified_name(nullptr), "");
}

}  // namespace
