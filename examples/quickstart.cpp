// Vexel in eight statements.
//
// Each statement is written once, as a chain of calls. The example prints
// the text the library renders for PostgreSQL, SQL Server and SQLite, runs
// it on an embedded SQLite database and prints the rows it returns.
#include <algorithm>
#include <cstdlib>
#include <functional>
#include <iomanip>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include <tessel/DialectConnect.h>
#include <tessel/SQLiteConnect.h>
#include <vexel/vexel.h>

using vexel::col;
using vexel::QueryBuilder;
using vexel::SQLValue;

namespace {

// The shop's tables. Tables carry their schema in every dialect; on SQLite
// the schema is a database attached under that name.
const vexel::sch shop("shop");
const vexel::tab products = shop.tab("products");
const vexel::tab orders = shop.tab("orders");

bool run_setup(tessel::SQLiteConnect& db) {
  const char* const kSetup =
      "ATTACH DATABASE ':memory:' AS shop;"
      "CREATE TABLE shop.products (id INTEGER PRIMARY KEY, name TEXT, category TEXT, price REAL);"
      "CREATE TABLE shop.orders (id INTEGER PRIMARY KEY, product_id INTEGER, qty INTEGER);"
      "INSERT INTO shop.products VALUES"
      "  (1, 'apple', 'fruit', 0.5), (2, 'banana', 'fruit', 0.25), (3, 'carrot', 'vegetable', 0.2),"
      "  (4, 'donut', 'bakery', 1.8), (5, 'eclair', 'bakery', 2.4), (6, 'fig', 'fruit', 0.9);"
      "INSERT INTO shop.orders VALUES"
      "  (1, 1, 12), (2, 4, 3), (3, 1, 6), (4, 5, 2), (5, 3, 10), (6, 6, 4), (7, 4, 1);";
  if (db.ExecuteUpdate(kSetup)) return true;
  std::string error;
  db.GetLastError(error);
  std::cerr << "setup failed: " << error << "\n";
  return false;
}

// The rows of the connection's last result as an aligned table, read with
// the cursor operations every connection offers.
void print_rows(tessel::SQLiteConnect& db) {
  const std::vector<std::string>& columns = db.ColumnNames();
  std::vector<std::vector<std::string>> rows;
  for (; !db.IsEOF(); db.MoveNext()) {
    std::vector<std::string> row;
    for (const std::string& name : columns) row.push_back(db.GetFieldString(name));
    rows.push_back(row);
  }
  std::vector<size_t> width;
  for (const std::string& name : columns) width.push_back(name.size());
  for (const auto& row : rows) {
    for (size_t i = 0; i < row.size(); ++i) width[i] = std::max(width[i], row[i].size());
  }
  auto line = [&](const std::vector<std::string>& cells, const char* separator, char fill) {
    std::string out = "    ";
    for (size_t i = 0; i < cells.size(); ++i) {
      out += (i ? separator : "") + cells[i] + std::string(width[i] - cells[i].size(), fill);
    }
    while (!out.empty() && out.back() == ' ') out.pop_back();
    std::cout << out << "\n";
  };
  line(columns, " | ", ' ');
  line(std::vector<std::string>(columns.size()), "-+-", '-');
  for (const auto& row : rows) line(row, " | ", ' ');
  std::cout << "    (" << rows.size() << (rows.size() == 1 ? " row)\n" : " rows)\n");
}

// Builds the statement for each dialect and prints its texts. A builder
// over a connection that only names its dialect renders without running.
template <typename Builder>
void print_texts(const std::string& title, const std::function<void(Builder&)>& build) {
  std::cout << "\n== " << title << " ==\n";
  const struct {
    const char* name;
    tessel::DBTYPE db;
  } kDialects[] = {{"PostgreSQL", tessel::DB_POSTGRESQL},
                   {"SQL Server", tessel::DB_SQLSERVER},
                   {"SQLite", tessel::DB_SQLITE}};
  for (const auto& d : kDialects) {
    Builder text_only(std::make_shared<tessel::DialectConnect>(d.db));
    build(text_only);
    std::cout << "  " << std::left << std::setw(12) << d.name << text_only.tosql() << "\n";
  }
}

// Runs the statement on the SQLite database (the dialect comes from the
// connection); false after printing the engine's error.
template <typename Builder>
bool run_on_sqlite(const std::shared_ptr<tessel::SQLiteConnect>& db,
                   const std::function<void(Builder&)>& build) {
  Builder b(db);
  build(b);
  if (b.Execute()) return true;
  std::string error;
  db->GetLastError(error);
  std::cerr << "  failed on SQLite: " << error << "\n";
  return false;
}

// A query: its texts, then its rows on SQLite.
bool walk(const std::shared_ptr<tessel::SQLiteConnect>& db, const std::string& title,
          const std::function<void(QueryBuilder&)>& build) {
  print_texts(title, build);
  if (!run_on_sqlite(db, build)) return false;
  std::cout << "  rows on SQLite:\n";
  print_rows(*db);
  return true;
}

// A data change: its texts, then the rows of `show` after it ran on SQLite.
template <typename Builder>
bool walk_change(const std::shared_ptr<tessel::SQLiteConnect>& db, const std::string& title,
                 const std::function<void(Builder&)>& build,
                 const std::function<void(QueryBuilder&)>& show) {
  print_texts(title, build);
  if (!run_on_sqlite(db, build) || !run_on_sqlite(db, show)) return false;
  std::cout << "  afterwards on SQLite:\n";
  print_rows(*db);
  return true;
}

}  // namespace

int main() {
  auto db = std::make_shared<tessel::SQLiteConnect>(":memory:");
  if (!db->IsOpen() || !run_setup(*db)) return EXIT_FAILURE;

  std::cout << "Each statement is built once: its text for three dialects, then its rows\n"
               "from an embedded SQLite database.\n";
  bool ok = true;

  ok &= walk(db, "1. A plain select: the cheap products, cheapest first", [](QueryBuilder& q) {
    q.SELECT({products.col("name"), products.col("price")})
        .FROM(products)
        .WHERE(products.col("price") < SQLValue(1))
        .ORDER_BY({products.col("price")});
  });

  ok &=
      walk(db, "2. A join with a grouped aggregate: units sold per category", [](QueryBuilder& q) {
        q.SELECT({products.col("category"), vexel::SUM(orders.col("qty")).AS("units")})
            .FROM(orders)
            .JOIN(products)
            .ON(products.col("id") == orders.col("product_id"))
            .GROUP_BY({products.col("category")})
            .HAVING(vexel::SUM(orders.col("qty")) > SQLValue(5))
            .ORDER_BY({col("units").DESC()});
      });

  ok &= walk(db, "3. A paged query: page 2, two products a page", [](QueryBuilder& q) {
    q.SELECT({products.col("id"), products.col("name")})
        .FROM(products)
        .ORDER_BY({products.col("id")})
        .LIMIT(2)
        .OFFSET(2);
  });

  ok &= walk(db, "4. A union: fruit, and anything ordered ten at a time", [](QueryBuilder& q) {
    // A statement used inside another only lends its text: build it in the
    // outer statement's dialect.
    QueryBuilder bulk(std::make_shared<tessel::DialectConnect>(q.db_type()));
    bulk.SELECT({products.col("name")})
        .FROM(products)
        .JOIN(orders)
        .ON(orders.col("product_id") == products.col("id"))
        .WHERE(orders.col("qty") >= SQLValue(10));
    q.SELECT({products.col("name")})
        .FROM(products)
        .WHERE(products.col("category") == "fruit")
        .UNION(bulk);
  });

  ok &= walk(db, "5. A left join on a subquery: products never ordered", [](QueryBuilder& q) {
    QueryBuilder sold(std::make_shared<tessel::DialectConnect>(q.db_type()));
    sold.SELECT({orders.col("product_id")}).FROM(orders);
    q.SELECT({products.col("name")})
        .FROM(products)
        .LEFT_JOIN(sold, "s")
        .ON(vexel::tab("s").col("product_id") == products.col("id"))
        .WHERE(vexel::tab("s").col("product_id").is_null());
  });

  const auto show_fruit = [](QueryBuilder& q) {
    q.SELECT({products.col("id"), products.col("name"), products.col("price")})
        .FROM(products)
        .WHERE(products.col("category") == "fruit")
        .ORDER_BY({products.col("id")});
  };

  // SQL Server has no ON CONFLICT: its text is a MERGE of the single row.
  ok &= walk_change<vexel::InsertBuilder>(
      db, "6. An upsert: a new fruit, or a new price for a known one",
      [](vexel::InsertBuilder& ins) {
        ins.INSERT_INTO(products)
            .COLUMNS({col("id"), col("name"), col("category"), col("price")})
            .VALUES({SQLValue(1), SQLValue("apple"), SQLValue("fruit"), SQLValue(0.45)})
            .ON_CONFLICT({col("id")})
            .SET(col("price"), col("price").EXCLUDED());
      },
      show_fruit);

  ok &= walk_change<vexel::UpdateBuilder>(
      db, "7. An update: fruit ten cents dearer",
      [](vexel::UpdateBuilder& up) {
        up.UPDATE(products)
            .SET(col("price"), col("price").increase(SQLValue(0.1)))
            .WHERE(products.col("category") == "fruit");
      },
      show_fruit);

  ok &= walk_change<vexel::DeleteBuilder>(
      db, "8. A delete: fruit that costs more than 0.8",
      [](vexel::DeleteBuilder& del) {
        del.DELETE_FROM(products)
            .WHERE(products.col("category") == "fruit")
            .AND(products.col("price") > SQLValue(0.8));
      },
      show_fruit);

  return ok ? EXIT_SUCCESS : EXIT_FAILURE;
}
