// A sales report: revenue per region and year inside a date window, built
// from computed values alone (no statement text written by hand), run on an
// embedded SQLite database and, given a PostgreSQL connection string, on
// PostgreSQL too. Both must return the same rows.
//
//   report                      SQLite only
//   report "host=... dbname=..."  SQLite and PostgreSQL (or VEXEL_PG_CONNINFO,
//                                 or a file named by VEXEL_PG_CONNINFO_FILE)
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include <tessel/PGConnect.h>
#include <tessel/SQLiteConnect.h>
#include <vexel/vexel.h>

using vexel::calc;
using vexel::col;
using vexel::SafeValue;

namespace {

struct Tables {
  vexel::tab regions, customers, products, orders, lines, refunds;
};

// Reference objects carry the dialect of the connection they go to.
Tables tables(tessel::DBTYPE db) {
  vexel::sch s("sales");
  s.set_db_type(db);
  return {s.tab("regions"), s.tab("customers"),   s.tab("products"),
          s.tab("orders"),  s.tab("order_lines"), s.tab("refunds")};
}

// The schema is the one text written by hand: there is no DDL builder. On
// SQLite the schema is an attached database.
bool create(tessel::RowsConnect& db, bool lite) {
  const std::string ddl =
      std::string(lite ? "ATTACH DATABASE ':memory:' AS sales;"
                       : "DROP SCHEMA IF EXISTS sales CASCADE; CREATE SCHEMA sales;") +
      "CREATE TABLE sales.regions (id INTEGER PRIMARY KEY, name TEXT NOT NULL);"
      "CREATE TABLE sales.customers (id INTEGER PRIMARY KEY, name TEXT, region_id INTEGER);"
      "CREATE TABLE sales.products (id INTEGER PRIMARY KEY, name TEXT, price DOUBLE PRECISION);"
      "CREATE TABLE sales.orders (id INTEGER PRIMARY KEY, customer_id INTEGER, ordered_on DATE);"
      "CREATE TABLE sales.order_lines (order_id INTEGER, product_id INTEGER, qty INTEGER,"
      " discount DOUBLE PRECISION);"
      "CREATE TABLE sales.refunds (order_id INTEGER);";
  return db.ExecuteUpdate(ddl);
}

bool insert(const std::shared_ptr<tessel::RowsConnect>& db, const vexel::tab& t,
            const std::vector<col>& columns, const std::vector<std::vector<SafeValue>>& rows) {
  vexel::InsertBuilder ins(db);
  ins.INSERT_INTO(t).COLUMNS(columns);
  for (const auto& row : rows) ins.VALUES(std::vector<vexel::SQLValue>(row.begin(), row.end()));
  return ins.Execute();
}

// Generated data: prices and discounts are binary fractions, so that both
// engines add them up exactly.
bool load(const std::shared_ptr<tessel::RowsConnect>& db, const Tables& t) {
  std::vector<std::vector<SafeValue>> regions, customers, products, orders, lines, refunds;
  for (const char* name : {"North", "South", "East", "West"})
    regions.push_back({static_cast<int>(regions.size()) + 1, name});
  for (int id = 1; id <= 40; ++id)
    customers.push_back({id, "customer " + std::to_string(id), id % 4 + 1});
  for (int id = 1; id <= 12; ++id)
    products.push_back({id, "product " + std::to_string(id), id * 1.25 + 0.5});
  for (int id = 1; id <= 600; ++id) {
    orders.push_back({id, (id * 7 + id / 12) % 40 + 1,
                      SafeValue::date(2021 + id % 3, id % 12 + 1, id % 28 + 1)});
    for (int k = 0; k <= id % 3; ++k)
      lines.push_back({id, (id * 5 + k * 3) % 12 + 1, (id + k) % 9 + 1, ((id + k) % 3) * 0.125});
    if (id % 17 == 0) refunds.push_back({id});
  }
  return insert(db, t.regions, {col("id"), col("name")}, regions) &&
         insert(db, t.customers, {col("id"), col("name"), col("region_id")}, customers) &&
         insert(db, t.products, {col("id"), col("name"), col("price")}, products) &&
         insert(db, t.orders, {col("id"), col("customer_id"), col("ordered_on")}, orders) &&
         insert(db, t.lines, {col("order_id"), col("product_id"), col("qty"), col("discount")},
                lines) &&
         insert(db, t.refunds, {col("order_id")}, refunds);
}

// Revenue per region and year from July 2021 for eighteen months, orders
// without a refund only; the bulk column counts lines of five or more; only
// the groups that earned more than a tenth of the window's revenue.
std::vector<std::string> report(const std::shared_ptr<tessel::RowsConnect>& db, const Tables& t) {
  const col qty = t.lines.col("qty");
  const calc revenue = t.products.col("price") * qty * (1 - calc(t.lines.col("discount")));
  const calc year = vexel::DATE_FIELD(vexel::DateField::Year, t.orders.col("ordered_on"));
  const calc from = vexel::CAST(SafeValue::date(2021, 7, 1), vexel::CastType::Date);
  // The lines of the window's orders, with their products (and, for the
  // report itself, the customers' regions).
  const auto in_window = [&](vexel::QueryBuilder& q, bool regions) {
    q.FROM(t.lines)
        .JOIN(t.orders)
        .ON(t.lines.col("order_id") == t.orders.col("id"))
        .JOIN(t.products)
        .ON(t.lines.col("product_id") == t.products.col("id"));
    if (regions) {
      q.JOIN(t.customers)
          .ON(t.orders.col("customer_id") == t.customers.col("id"))
          .JOIN(t.regions)
          .ON(t.customers.col("region_id") == t.regions.col("id"));
    }
    q.WHERE(t.orders.col("ordered_on") >= from)
        .AND(t.orders.col("ordered_on") < vexel::DATE_ADD(from, 18, vexel::MONTH));
  };
  vexel::QueryBuilder refunded(db), tenth(db), q(db);
  refunded.SELECT({t.refunds.col("order_id")}).FROM(t.refunds);
  refunded.WHERE(t.refunds.col("order_id") == t.orders.col("id"));
  tenth.SELECT({vexel::SUM(revenue) / 10});
  in_window(tenth, false);
  vexel::CASE bulk;
  bulk.WHEN(qty >= vexel::SQLValue(5)).THEN(revenue).ELSE(vexel::SQLValue(0));
  const vexel::aggr_func total = vexel::SUM(revenue);
  q.SELECT({t.regions.col("name"), calc(year).AS("year"), vexel::aggr_func(total).AS("revenue"),
            vexel::SUM(calc(bulk, db->GetDBType())).AS("bulk"),
            vexel::COUNT_DISTINCT(t.orders.col("id")).AS("orders")});
  in_window(q, true);
  q.AND(vexel::NOT_EXISTS(refunded))
      .GROUP_BY({t.regions.col("name"), year})
      .HAVING(total > tenth)
      .ORDER_BY({vexel::aggr_func(total).DESC(), t.regions.col("name")});
  std::vector<std::string> rows;
  if (!q.Execute()) return rows;
  for (; !db->IsEOF(); db->MoveNext()) {
    std::string region;
    int64_t y = 0, orders = 0;
    double sum = 0, bulk_sum = 0;
    db->GetText("name", region);
    db->GetInt64("year", y);
    db->GetDouble("revenue", sum);
    db->GetDouble("bulk", bulk_sum);
    db->GetInt64("orders", orders);
    char line[160];
    std::snprintf(line, sizeof line, "%-6s %lld %10.2f %10.2f %4lld", region.c_str(),
                  static_cast<long long>(y), sum, bulk_sum, static_cast<long long>(orders));
    rows.push_back(line);
  }
  return rows;
}

std::vector<std::string> run(const std::shared_ptr<tessel::RowsConnect>& db, const char* engine) {
  const Tables t = tables(db->GetDBType());
  std::vector<std::string> rows;
  if (!create(*db, db->GetDBType() == tessel::DB_SQLITE) || !load(db, t) ||
      (rows = report(db, t)).empty()) {
    std::string error;
    db->GetLastError(error);
    std::cerr << engine << ": " << error << "\n";
    return {};
  }
  std::cout << engine << "\nregion year    revenue       bulk orders\n";
  for (const std::string& row : rows) std::cout << row << "\n";
  return rows;
}

std::string pg_conninfo(int argc, char** argv) {
  if (argc > 1) return argv[1];
  if (const char* info = std::getenv("VEXEL_PG_CONNINFO")) return info;
  std::string info;
  if (const char* file = std::getenv("VEXEL_PG_CONNINFO_FILE"))
    std::getline(std::ifstream(file), info);
  return info;
}

}  // namespace

int main(int argc, char** argv) {
  const auto lite = run(std::make_shared<tessel::SQLiteConnect>(":memory:"), "SQLite");
  if (lite.empty()) return EXIT_FAILURE;
  const std::string conninfo = pg_conninfo(argc, argv);
  if (conninfo.empty()) return EXIT_SUCCESS;
  const auto pg = run(std::make_shared<tessel::PGConnect>(conninfo), "PostgreSQL");
  if (pg != lite) {
    std::cerr << "the engines disagree\n";
    return EXIT_FAILURE;
  }
  return EXIT_SUCCESS;
}
