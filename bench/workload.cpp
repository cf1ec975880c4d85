// The reference workload, Vexel and floor side by side for each case.
//
// The Vexel half is written as a host writes it: reference objects, values
// and the builder are made per statement from the names the host holds. The
// floor half appends the very same bytes by hand into one string reserved
// up front, taking every name from the same std::strings; it is the cost of
// the text itself, below which no builder can go.
#include "workload.h"

#include <charconv>
#include <string>
#include <utility>
#include <vector>

#include <vexel/vexel.h>

namespace bench {

using Conn = std::shared_ptr<tessel::CConnect>;
using vexel::col;
using vexel::Ptr_CommonExpr;
using vexel::SQLValue;

struct Model {
  std::string app = "app";
  std::string users = "users", orders = "orders", items = "items", products = "products";
  std::string u = "u", o = "o", i = "i", p = "p";
  std::string id = "id", name = "name", age = "age", status = "status";
  std::string user_id = "user_id", order_id = "order_id", product_id = "product_id";
  std::string active = "active", new_name = "x";
  int adult = 18, limit = 10, offset = 20, new_age = 31, target_id = 3;
  std::vector<int> doomed{1, 2, 3};

  struct User {
    int id;
    std::string name;
    int age;
  };
  std::vector<User> upsert{{1, "a", 30}, {2, "b", 40}};
  std::vector<User> users_bulk;  // the bulk cases take the first N

  // A wide SELECT over the four tables u, o, i, p (table index 0..3).
  struct Field {
    int table;
    std::string name;
  };
  struct Cond {
    int table;
    std::string column;
    bool text;  // column = 'word', else column > number
    int number;
    std::string word;
  };
  struct Wide {
    std::vector<Field> cols;
    std::vector<Cond> conds;
  };
  Wide s5, s5x10;

  std::vector<std::string> chain_cols;  // the columns the long AND chains cycle through
  std::vector<std::string> cte_names;   // the names of the WITH statements

  Model() {
    for (int k = 0; k < 10000; ++k) {
      users_bulk.push_back({k + 1, "user" + std::to_string(k + 1), 20 + k % 50});
    }
    s5 = wide(20, 10);
    s5x10 = wide(200, 100);
    for (int k = 0; k < 10; ++k) chain_cols.push_back("c" + std::to_string(k));
    for (int k = 0; k < 50; ++k) cte_names.push_back("q" + std::to_string(k));
  }

  static Wide wide(int columns, int conditions) {
    Wide w;
    for (int k = 0; k < columns; ++k) w.cols.push_back({k % 4, "c" + std::to_string(k)});
    for (int k = 0; k < conditions; ++k) {
      w.conds.push_back({k % 4, "c" + std::to_string(k), k % 2 == 1, k * 10, "v" + std::to_string(k)});
    }
    return w;
  }
};

const Model& model() {
  static const Model m;
  return m;
}

const char* dialect_tag(tessel::DBTYPE db) {
  switch (db) {
    case tessel::DB_SQLITE:
      return "sqlite";
    case tessel::DB_SQLSERVER:
      return "mssql";
    default:
      return "pg";
  }
}

namespace {

// ---- floor helpers: plain appends, nothing more -------------------------

template <size_t N>
void put(std::string& s, const char (&literal)[N]) {
  s.append(literal, N - 1);
}
void put(std::string& s, const std::string& text) { s.append(text); }
void put(std::string& s, char c) { s.push_back(c); }
void put(std::string& s, int v) {
  char digits[16];
  const auto end = std::to_chars(digits, digits + sizeof digits, v).ptr;
  s.append(digits, static_cast<size_t>(end - digits));
}
template <typename... Parts>
void cat(std::string& s, const Parts&... parts) {
  (put(s, parts), ...);
}


std::string reserved(size_t size) {
  std::string s;
  s.reserve(size);
  return s;
}

// ---- S1: a join with a condition, an order and paging -------------------

void vexel_s1(const Model& m, const Conn& conn, Texts& out) {
  const vexel::sch app(m.app);
  vexel::tab users = app.tab(m.users);
  users.AS(m.u);
  vexel::tab orders = app.tab(m.orders);
  orders.AS(m.o);
  const vexel::tab u(m.u), o(m.o);
  vexel::QueryBuilder q(conn);
  q.SELECT({u.col(m.id), u.col(m.name)})
      .FROM(users)
      .JOIN(orders)
      .ON(u.col(m.id) == o.col(m.user_id))
      .WHERE(u.col(m.age) > SQLValue(m.adult))
      .AND(u.col(m.status) == SQLValue(m.active))
      .ORDER_BY({u.col(m.name).DESC()})
      .LIMIT(m.limit)
      .OFFSET(m.offset);
  out.first = q.tosql();
}

void floor_s1(const Model& m, tessel::DBTYPE db, const size_t reserve[2], Texts& out) {
  std::string s = reserved(reserve[0]);
  cat(s, "SELECT ", m.u, '.', m.id, " , ", m.u, '.', m.name);
  cat(s, " FROM ", m.app, '.', m.users, " AS ", m.u);
  cat(s, " JOIN ", m.app, '.', m.orders, " AS ", m.o);
  cat(s, " ON ", m.u, '.', m.id, " = ", m.o, '.', m.user_id);
  cat(s, " WHERE ", m.u, '.', m.age, " > ", m.adult);
  cat(s, " AND ", m.u, '.', m.status, " = '", m.active, '\'');
  cat(s, " ORDER BY ", m.u, '.', m.name, " DESC ");
  if (db == tessel::DB_SQLSERVER) {
    cat(s, " OFFSET ", m.offset, " ROWS FETCH NEXT ", m.limit, " ROWS ONLY");
  } else {
    cat(s, " LIMIT ", m.limit, " OFFSET ", m.offset);
  }
  out.first = std::move(s);
}

// ---- S2: a two-row upsert (two one-row MERGEs on SQL Server) -----------

void vexel_s2(const Model& m, const Conn& conn, Texts& out) {
  const vexel::tab users = vexel::sch(m.app).tab(m.users);
  auto upsert = [&](vexel::InsertBuilder& ins, size_t first, size_t last) {
    ins.INSERT_INTO(users).COLUMNS({col(m.id), col(m.name), col(m.age)});
    for (size_t r = first; r < last; ++r) {
      const Model::User& row = m.upsert[r];
      ins.VALUES({SQLValue(row.id), SQLValue(row.name), SQLValue(row.age)});
    }
    ins.ON_CONFLICT({col(m.id)}).DO_UPDATE().SET(col(m.name), col(m.name).EXCLUDED());
  };
  if (conn->GetDBType() == tessel::DB_SQLSERVER) {
    vexel::InsertBuilder one(conn), two(conn);
    upsert(one, 0, 1);
    upsert(two, 1, 2);
    out.first = one.tosql();
    out.second = two.tosql();
  } else {
    vexel::InsertBuilder ins(conn);
    upsert(ins, 0, m.upsert.size());
    out.first = ins.tosql();
  }
}

void floor_merge(const Model& m, const Model::User& row, std::string& s) {
  auto values = [&] { cat(s, row.id, ",'", row.name, "',", row.age); };
  cat(s, "MERGE INTO ", m.app, '.', m.users, " USING (VALUES(");
  values();
  cat(s, ")) AS Excluded(", m.id, ',', m.name, ',', m.age, ')');
  cat(s, " ON(", m.app, '.', m.users, '.', m.id, " = Excluded.", m.id, ')');
  cat(s, " WHEN NOT MATCHED THEN INSERT(", m.id, ',', m.name, ',', m.age, ") VALUES(");
  values();
  cat(s, ") WHEN MATCHED THEN UPDATE SET ", m.name, " = EXCLUDED.", m.name, ';');
}

void floor_s2(const Model& m, tessel::DBTYPE db, const size_t reserve[2], Texts& out) {
  if (db == tessel::DB_SQLSERVER) {
    std::string one = reserved(reserve[0]), two = reserved(reserve[1]);
    floor_merge(m, m.upsert[0], one);
    floor_merge(m, m.upsert[1], two);
    out.first = std::move(one);
    out.second = std::move(two);
    return;
  }
  std::string s = reserved(reserve[0]);
  cat(s, "INSERT INTO ", m.app, '.', m.users, '(', m.id, ',', m.name, ',', m.age, ") VALUES");
  for (size_t r = 0; r < m.upsert.size(); ++r) {
    const Model::User& row = m.upsert[r];
    if (r) s += ',';
    cat(s, '(', row.id, ",'", row.name, "',", row.age, ')');
  }
  cat(s, " ON CONFLICT (", m.id, ") DO UPDATE SET ", m.name, " = EXCLUDED.", m.name);
  out.first = std::move(s);
}

// ---- S3: an update of two columns returning the key --------------------

void vexel_s3(const Model& m, const Conn& conn, Texts& out) {
  const vexel::tab users = vexel::sch(m.app).tab(m.users);
  vexel::UpdateBuilder up(conn);
  up.UPDATE(users)
      .SET(col(m.age), SQLValue(m.new_age))
      .SET(col(m.name), SQLValue(m.new_name))
      .WHERE(col(m.id) == m.target_id)
      .RETURNING({col(m.id)});
  out.first = up.tosql();
}

void floor_s3(const Model& m, tessel::DBTYPE db, const size_t reserve[2], Texts& out) {
  std::string s = reserved(reserve[0]);
  cat(s, "UPDATE ", m.app, '.', m.users, " SET ", m.age, " = ", m.new_age);
  cat(s, ", ", m.name, " = '", m.new_name, '\'');
  if (db == tessel::DB_SQLSERVER) {
    cat(s, " OUTPUT inserted.", m.id, " WHERE ", m.id, " = ", m.target_id);
  } else {
    cat(s, " WHERE ", m.id, " = ", m.target_id, " RETURNING ", m.id);
  }
  out.first = std::move(s);
}

// ---- S4: a delete of a list of keys returning them ---------------------

void vexel_s4(const Model& m, const Conn& conn, Texts& out) {
  const vexel::tab users = vexel::sch(m.app).tab(m.users);
  vexel::DeleteBuilder del(conn);
  del.DELETE_FROM(users).WHERE(col(m.id).in(m.doomed)).RETURNING({col(m.id)});
  out.first = del.tosql();
}

void floor_s4(const Model& m, tessel::DBTYPE db, const size_t reserve[2], Texts& out) {
  std::string s = reserved(reserve[0]);
  s += "DELETE FROM ";
  if (db != tessel::DB_SQLITE) cat(s, m.app, '.');
  s += m.users;
  if (db == tessel::DB_SQLSERVER) cat(s, " OUTPUT deleted.", m.id);
  cat(s, " WHERE ", m.id, " IN (");
  for (size_t k = 0; k < m.doomed.size(); ++k) {
    if (k) s += ',';
    put(s, m.doomed[k]);
  }
  s += ')';
  if (db != tessel::DB_SQLSERVER) cat(s, " RETURNING ", m.id);
  out.first = std::move(s);
}

// ---- S5: a wide SELECT over four tables ---------------------------------

void vexel_wide(const Model& m, const Model::Wide& w, const Conn& conn, Texts& out) {
  const vexel::sch app(m.app);
  const std::string* names[4] = {&m.users, &m.orders, &m.items, &m.products};
  const std::string* aliases[4] = {&m.u, &m.o, &m.i, &m.p};
  vexel::tab source[4], alias[4];
  for (int t = 0; t < 4; ++t) {
    source[t] = app.tab(*names[t]);
    source[t].AS(*aliases[t]);
    alias[t] = vexel::tab(*aliases[t]);
  }
  std::vector<col> cols;
  cols.reserve(w.cols.size());
  for (const Model::Field& f : w.cols) cols.push_back(alias[f.table].col(f.name));

  vexel::QueryBuilder q(conn);
  q.SELECT(cols)
      .FROM(source[0])
      .JOIN(source[1])
      .ON(alias[1].col(m.user_id) == alias[0].col(m.id))
      .JOIN(source[2])
      .ON(alias[2].col(m.order_id) == alias[1].col(m.id))
      .JOIN(source[3])
      .ON(alias[3].col(m.id) == alias[2].col(m.product_id));
  for (size_t k = 0; k < w.conds.size(); ++k) {
    const Model::Cond& c = w.conds[k];
    const col column = alias[c.table].col(c.column);
    const Ptr_CommonExpr condition =
        c.text ? column == SQLValue(c.word) : column > SQLValue(c.number);
    if (k == 0) {
      q.WHERE(condition);
    } else {
      q.AND(condition);
    }
  }
  q.GROUP_BY({alias[0].col(w.cols[0].name), alias[1].col(w.cols[1].name)})
      .ORDER_BY({alias[0].col(w.cols[0].name), alias[1].col(w.cols[1].name).DESC(),
                 alias[2].col(w.cols[2].name)});
  out.first = q.tosql();
}

void floor_wide(const Model& m, const Model::Wide& w, size_t reserve, Texts& out) {
  const std::string* aliases[4] = {&m.u, &m.o, &m.i, &m.p};
  std::string s = reserved(reserve);
  s += "SELECT ";
  for (size_t k = 0; k < w.cols.size(); ++k) {
    if (k) s += " , ";
    cat(s, *aliases[w.cols[k].table], '.', w.cols[k].name);
  }
  cat(s, " FROM ", m.app, '.', m.users, " AS ", m.u);
  cat(s, " JOIN ", m.app, '.', m.orders, " AS ", m.o);
  cat(s, " ON ", m.o, '.', m.user_id, " = ", m.u, '.', m.id);
  cat(s, " JOIN ", m.app, '.', m.items, " AS ", m.i);
  cat(s, " ON ", m.i, '.', m.order_id, " = ", m.o, '.', m.id);
  cat(s, " JOIN ", m.app, '.', m.products, " AS ", m.p);
  cat(s, " ON ", m.p, '.', m.id, " = ", m.i, '.', m.product_id);
  for (size_t k = 0; k < w.conds.size(); ++k) {
    const Model::Cond& c = w.conds[k];
    cat(s, k ? " AND " : " WHERE ", *aliases[c.table], '.', c.column);
    if (c.text) {
      cat(s, " = '", c.word, '\'');
    } else {
      cat(s, " > ", c.number);
    }
  }
  cat(s, " GROUP BY ", m.u, '.', w.cols[0].name, " , ", m.o, '.', w.cols[1].name);
  cat(s, " ORDER BY ", m.u, '.', w.cols[0].name, " , ", m.o, '.', w.cols[1].name, " DESC ");
  cat(s, " , ", m.i, '.', w.cols[2].name);
  out.first = std::move(s);
}

void vexel_s5(const Model& m, const Conn& conn, Texts& out) { vexel_wide(m, m.s5, conn, out); }
void floor_s5(const Model& m, tessel::DBTYPE, const size_t reserve[2], Texts& out) {
  floor_wide(m, m.s5, reserve[0], out);
}
void vexel_s5x10(const Model& m, const Conn& conn, Texts& out) {
  vexel_wide(m, m.s5x10, conn, out);
}
void floor_s5x10(const Model& m, tessel::DBTYPE, const size_t reserve[2], Texts& out) {
  floor_wide(m, m.s5x10, reserve[0], out);
}

// ---- INSERT of N rows -----------------------------------------------------

template <size_t N>
void vexel_insert(const Model& m, const Conn& conn, Texts& out) {
  const vexel::tab users = vexel::sch(m.app).tab(m.users);
  vexel::InsertBuilder ins(conn);
  ins.INSERT_INTO(users).COLUMNS({col(m.id), col(m.name), col(m.age)});
  for (size_t r = 0; r < N; ++r) {
    const Model::User& row = m.users_bulk[r];
    ins.VALUES({SQLValue(row.id), SQLValue(row.name), SQLValue(row.age)});
  }
  out.first = ins.tosql();
}

template <size_t N>
void floor_insert(const Model& m, tessel::DBTYPE db, const size_t reserve[2], Texts& out) {
  std::string s = reserved(reserve[0]);
  cat(s, "INSERT INTO ", m.app, '.', m.users, '(', m.id, ',', m.name, ',', m.age, ')');
  s += db == tessel::DB_SQLSERVER ? " VALUES " : " VALUES";
  for (size_t r = 0; r < N; ++r) {
    const Model::User& row = m.users_bulk[r];
    if (r) s += ',';
    cat(s, '(', row.id, ",'", row.name, "',", row.age, ')');
  }
  out.first = std::move(s);
}

// ---- batch UPDATE of N rows (PostgreSQL join, SQLite CASE lists) ----------

template <size_t N>
void vexel_batch(const Model& m, const Conn& conn, Texts& out) {
  const vexel::tab users = vexel::sch(m.app).tab(m.users);
  std::vector<std::vector<SQLValue>> rows;
  rows.reserve(N);
  for (size_t r = 0; r < N; ++r) {
    const Model::User& row = m.users_bulk[r];
    rows.push_back({SQLValue(row.id), SQLValue(row.name), SQLValue(row.age)});
  }
  vexel::UpdateBuilder up(conn);
  up.UPDATE(users)
      .BATCH_SET({col(m.name), col(m.age)})
      .BATCH_CONDITION({col(m.id)})
      .BATCH_VALUES({col(m.id), col(m.name), col(m.age)}, rows);
  out.first = up.tosql();
}

template <size_t N>
void floor_batch(const Model& m, tessel::DBTYPE db, const size_t reserve[2], Texts& out) {
  std::string s = reserved(reserve[0]);
  cat(s, "UPDATE ", m.app, '.', m.users, " SET ");
  if (db == tessel::DB_SQLITE) {
    // name= CASE  WHEN id=1 THEN 'user1' ... END ,age= CASE ... END  WHERE id IN (1,...)
    cat(s, m.name, "= CASE ");
    for (size_t r = 0; r < N; ++r) {
      const Model::User& row = m.users_bulk[r];
      cat(s, " WHEN ", m.id, '=', row.id, " THEN '", row.name, '\'');
    }
    cat(s, " END ,", m.age, "= CASE ");
    for (size_t r = 0; r < N; ++r) {
      const Model::User& row = m.users_bulk[r];
      cat(s, " WHEN ", m.id, '=', row.id, " THEN ", row.age);
    }
    cat(s, " END  WHERE ", m.id, " IN (");
    for (size_t r = 0; r < N; ++r) {
      if (r) s += ',';
      put(s, m.users_bulk[r].id);
    }
    s += ')';
  } else {
    cat(s, m.name, "=tmp.", m.name, ',', m.age, "=tmp.", m.age, " FROM (VALUES ");
    for (size_t r = 0; r < N; ++r) {
      const Model::User& row = m.users_bulk[r];
      if (r) s += ", ";
      cat(s, '(', row.id, ", '", row.name, "', ", row.age, ") ");
    }
    cat(s, ")  AS tmp(", m.id, ',', m.name, ',', m.age, ") WHERE ", m.app, '.', m.users, '.',
        m.id, "=tmp.", m.id);
  }
  out.first = std::move(s);
}

// ---- WITH of 50 named statements ------------------------------------------

void vexel_with(const Model& m, const Conn& conn, Texts& out) {
  vexel::tab users = vexel::sch(m.app).tab(m.users);
  users.AS(m.u);
  const vexel::tab u(m.u);
  vexel::WithBuilder with(conn);
  for (size_t k = 0; k < m.cte_names.size(); ++k) {
    vexel::QueryBuilder part(conn);
    part.SELECT({u.col(m.id)}).FROM(users).WHERE(u.col(m.age) > SQLValue(static_cast<int>(k)));
    with.AS(m.cte_names[k], part);
  }
  const vexel::tab last(m.cte_names.back());
  vexel::QueryBuilder main(conn);
  main.SELECT({last.col(m.id)}).FROM(last);
  with.WithDo(main);
  out.first = with.tosql();
}

void floor_with(const Model& m, tessel::DBTYPE, const size_t reserve[2], Texts& out) {
  std::string s = reserved(reserve[0]);
  s += "WITH ";
  for (size_t k = 0; k < m.cte_names.size(); ++k) {
    if (k) s += ',';
    cat(s, m.cte_names[k], " AS (SELECT ", m.u, '.', m.id, " FROM ", m.app, '.', m.users, " AS ",
        m.u, " WHERE ", m.u, '.', m.age, " > ", static_cast<int>(k), ')');
  }
  cat(s, " SELECT ", m.cte_names.back(), '.', m.id, " FROM ", m.cte_names.back());
  out.first = std::move(s);
}

// ---- N AND-ed conditions, three ways ---------------------------------------

enum class Way { kBuilderAnd, kFlat, kNested };

template <size_t N, Way W>
void vexel_chain(const Model& m, const Conn& conn, Texts& out) {
  vexel::tab users = vexel::sch(m.app).tab(m.users);
  users.AS(m.u);
  const vexel::tab u(m.u);
  auto condition = [&](size_t k) {
    return u.col(m.chain_cols[k % m.chain_cols.size()]) > SQLValue(static_cast<int>(k));
  };
  vexel::QueryBuilder q(conn);
  q.SELECT({u.col(m.id)}).FROM(users);
  if (W == Way::kBuilderAnd) {
    q.WHERE(condition(0));
    for (size_t k = 1; k < N; ++k) q.AND(condition(k));
  } else {
    Ptr_CommonExpr where = condition(0);
    for (size_t k = 1; k < N; ++k) {
      if (W == Way::kFlat) {
        where.AndCon(condition(k));
      } else {
        where = where.AND(condition(k));
      }
    }
    q.WHERE(where);
  }
  out.first = q.tosql();
}

template <size_t N, Way W>
void floor_chain(const Model& m, tessel::DBTYPE, const size_t reserve[2], Texts& out) {
  std::string s = reserved(reserve[0]);
  cat(s, "SELECT ", m.u, '.', m.id, " FROM ", m.app, '.', m.users, " AS ", m.u, " WHERE ");
  if (W == Way::kNested) s.append(N - 1, '(');
  if (W == Way::kFlat) s += '(';
  for (size_t k = 0; k < N; ++k) {
    if (k) s += " AND ";
    cat(s, m.u, '.', m.chain_cols[k % m.chain_cols.size()], " > ", static_cast<int>(k));
    if (W == Way::kNested && k) s += ')';
  }
  if (W == Way::kFlat) s += ')';
  out.first = std::move(s);
}

std::vector<Case> make_cases() {
  const tessel::DBTYPE all[] = {tessel::DB_POSTGRESQL, tessel::DB_SQLITE, tessel::DB_SQLSERVER};
  std::vector<Case> list;
  auto add = [&](const std::string& group, tessel::DBTYPE db, decltype(Case::vexel) v,
                 decltype(Case::floor) f, int count_iterations) {
    list.push_back({group + "/" + dialect_tag(db), group, db, v, f, count_iterations});
  };
  const struct {
    const char* group;
    decltype(Case::vexel) vexel;
    decltype(Case::floor) floor;
  } statements[] = {{"S1", vexel_s1, floor_s1},
                    {"S2", vexel_s2, floor_s2},
                    {"S3", vexel_s3, floor_s3},
                    {"S4", vexel_s4, floor_s4},
                    {"S5", vexel_s5, floor_s5}};
  for (const auto& s : statements) {
    for (tessel::DBTYPE db : all) add(s.group, db, s.vexel, s.floor, 200);
  }
  for (tessel::DBTYPE db : all) add("S5x10", db, vexel_s5x10, floor_s5x10, 20);
  for (tessel::DBTYPE db : all) add("insert_1000", db, vexel_insert<1000>, floor_insert<1000>, 5);
  for (tessel::DBTYPE db : all) {
    add("insert_10000", db, vexel_insert<10000>, floor_insert<10000>, 2);
  }
  // SQL Server has no batch form: the builder leaves it out of the text.
  for (tessel::DBTYPE db : {tessel::DB_POSTGRESQL, tessel::DB_SQLITE}) {
    add("batch_update_1000", db, vexel_batch<1000>, floor_batch<1000>, 5);
    add("batch_update_10000", db, vexel_batch<10000>, floor_batch<10000>, 2);
  }
  for (tessel::DBTYPE db : all) add("with_50", db, vexel_with, floor_with, 20);
  const struct {
    const char* way;
    decltype(Case::vexel) v1000, v10000;
    decltype(Case::floor) f1000, f10000;
  } chains[] = {
      {"and_builder", vexel_chain<1000, Way::kBuilderAnd>, vexel_chain<10000, Way::kBuilderAnd>,
       floor_chain<1000, Way::kBuilderAnd>, floor_chain<10000, Way::kBuilderAnd>},
      {"and_flat", vexel_chain<1000, Way::kFlat>, vexel_chain<10000, Way::kFlat>,
       floor_chain<1000, Way::kFlat>, floor_chain<10000, Way::kFlat>},
      {"and_nested", vexel_chain<1000, Way::kNested>, vexel_chain<10000, Way::kNested>,
       floor_chain<1000, Way::kNested>, floor_chain<10000, Way::kNested>},
  };
  for (const auto& c : chains) {
    for (tessel::DBTYPE db : all) {
      add(std::string(c.way) + "_1000", db, c.v1000, c.f1000, 5);
      add(std::string(c.way) + "_10000", db, c.v10000, c.f10000, 1);
    }
  }
  return list;
}

}  // namespace

const std::vector<Case>& cases() {
  static const std::vector<Case> list = make_cases();
  return list;
}

}  // namespace bench
