// vexel_cursor_bench: reads rows of (integer, short text, longer text)
// through the shipped connections and through the engines' own C APIs, and
// prints the time and the peak memory of each reader as a markdown table.
//
//   vexel_cursor_bench [--rows N] [--pg-rows N] [--rounds R] [--pg CONNINFO]
//   vexel_cursor_bench --reader NAME --rows N [--db PATH] [--pg CONNINFO]
//
// The first form prepares the SQLite file (and the PostgreSQL table when a
// connection string is given), then runs every reader R times, each in a
// fresh process of this program (the second form), so that each peak
// memory figure is that reader's own. Times are the best round.
#include <libpq-fe.h>
#include <sqlite3.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "tessel/PGConnect.h"
#include "tessel/SQLiteConnect.h"

namespace {

struct Options {
  long rows = 1000000;
  long pg_rows = 100000;
  int rounds = 3;
  std::string reader, db, pg;
};

// The rows: id, 's' + id (short enough for a string's own buffer) and a
// 60-byte text that needs the heap when copied.
std::string fill_sql(long rows) {
  return "CREATE TABLE t (id INTEGER, s TEXT, l TEXT); INSERT INTO t WITH RECURSIVE n(i) AS "
         "(SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " +
         std::to_string(rows) + ") SELECT i, 's' || i, printf('%060d', i) FROM n";
}
const char kSelect[] = "SELECT id, s, l FROM t";

// What every reader computes from the values, so that none can be skipped.
struct Sum {
  long long ints = 0, bytes = 0, rows = 0;
  void add(long long id, const char* s, size_t ns, const char* l, size_t nl) {
    ints += id;
    bytes += static_cast<long long>(ns + nl) + (ns > 0 ? s[0] : 0) + (nl > 0 ? l[nl - 1] : 0);
    ++rows;
  }
};

Sum read_sqlite_api(sqlite3* db) {
  Sum sum;
  sqlite3_stmt* stmt = nullptr;
  sqlite3_prepare_v2(db, kSelect, -1, &stmt, nullptr);
  while (sqlite3_step(stmt) == SQLITE_ROW) {
    const long long id = sqlite3_column_int64(stmt, 0);
    const char* s = reinterpret_cast<const char*>(sqlite3_column_text(stmt, 1));
    const size_t ns = static_cast<size_t>(sqlite3_column_bytes(stmt, 1));
    const char* l = reinterpret_cast<const char*>(sqlite3_column_text(stmt, 2));
    const size_t nl = static_cast<size_t>(sqlite3_column_bytes(stmt, 2));
    sum.add(id, s, ns, l, nl);
  }
  sqlite3_finalize(stmt);
  return sum;
}

// Leaves the result to the caller to free, as the connection frees its own
// only when it goes.
Sum read_libpq(PGconn* conn, PGresult*& r) {
  Sum sum;
  r = PQexec(conn, kSelect);
  const int rows = PQntuples(r);
  for (int i = 0; i < rows; ++i) {
    const long long id = std::atoll(PQgetvalue(r, i, 0));
    sum.add(id, PQgetvalue(r, i, 1), static_cast<size_t>(PQgetlength(r, i, 1)), PQgetvalue(r, i, 2),
            static_cast<size_t>(PQgetlength(r, i, 2)));
  }
  return sum;
}

// The shipped connection as the library and a host read it: the cursor
// operations of tessel::CConnect, fields by name.
Sum read_connection(tessel::CConnect& c) {
  Sum sum;
  if (!c.ExecuteQuery(kSelect)) return sum;
  for (; !c.IsEOF(); c.MoveNext()) {
    const std::string s = c.GetFieldString("s");
    const std::string l = c.GetFieldString("l");
    sum.add(c.GetFieldInt("id"), s.data(), s.size(), l.data(), l.size());
  }
  return sum;
}

// The same through the connection's typed reads: columns looked up once,
// texts read into the caller's own strings.
Sum read_typed(tessel::RowsConnect& c) {
  Sum sum;
  if (!c.ExecuteQuery(kSelect)) return sum;
  const int id = c.ColumnIndex("id"), s = c.ColumnIndex("s"), l = c.ColumnIndex("l");
  std::string sv, lv;
  int64_t v = 0;
  for (; !c.IsEOF(); c.MoveNext()) {
    c.GetInt64(id, v);
    c.GetText(s, sv);
    c.GetText(l, lv);
    sum.add(v, sv.data(), sv.size(), lv.data(), lv.size());
  }
  return sum;
}

Sum read_shipped(tessel::RowsConnect& c, const std::string& reader) {
  return reader.find("/typed") != std::string::npos ? read_typed(c) : read_connection(c);
}

double now_ms() {
  using namespace std::chrono;
  return duration<double, std::milli>(steady_clock::now().time_since_epoch()).count();
}

// One reader in this process: prints "rows ms peak_kb".
int run_reader(const Options& o) {
  const std::string& r = o.reader;
  Sum sum;
  double start = 0, end = 0;
  if (r.rfind("sqlite-", 0) == 0) {
    const bool memory = r.find("memory") != std::string::npos;
    if (r.find("/c-api") == std::string::npos) {
      tessel::SQLiteConnect c(memory ? ":memory:" : o.db);
      if (memory) c.ExecuteUpdate(fill_sql(o.rows));
      start = now_ms();
      sum = read_shipped(c, r);
      end = now_ms();
    } else {
      sqlite3* db = nullptr;
      sqlite3_open(memory ? ":memory:" : o.db.c_str(), &db);
      if (memory) sqlite3_exec(db, fill_sql(o.rows).c_str(), nullptr, nullptr, nullptr);
      start = now_ms();
      sum = read_sqlite_api(db);
      end = now_ms();
      sqlite3_close(db);
    }
  } else if (r != "pg/libpq") {
    tessel::PGConnect c(o.pg);
    start = now_ms();
    sum = read_shipped(c, r);
    end = now_ms();
  } else {
    PGconn* conn = PQconnectdb(o.pg.c_str());
    start = now_ms();
    PGresult* result = nullptr;
    sum = read_libpq(conn, result);
    end = now_ms();
    PQclear(result);
    PQfinish(conn);
  }
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  std::printf("%lld %.1f %ld %lld\n", sum.rows, end - start, usage.ru_maxrss, sum.ints + sum.bytes);
  return sum.rows > 0 ? 0 : 1;
}

struct Figure {
  double ms = 1e18;
  long peak_kb = 0;
  long long rows = 0, check = 0;
};

// Runs one reader in a fresh process of this program.
bool measure(const char* self, const Options& o, const std::string& reader, long rows,
             Figure& best) {
  int fd[2];
  if (pipe(fd) != 0) return false;
  const pid_t pid = fork();
  if (pid == 0) {
    dup2(fd[1], 1);
    close(fd[0]);
    const std::string n = std::to_string(rows);
    execl(self, self, "--reader", reader.c_str(), "--rows", n.c_str(), "--db", o.db.c_str(), "--pg",
          o.pg.c_str(), static_cast<char*>(nullptr));
    _exit(127);
  }
  close(fd[1]);
  char line[256] = {0};
  const ssize_t got = read(fd[0], line, sizeof line - 1);
  close(fd[0]);
  int status = 0;
  waitpid(pid, &status, 0);
  Figure f;
  if (got <= 0 || std::sscanf(line, "%lld %lf %ld %lld", &f.rows, &f.ms, &f.peak_kb, &f.check) != 4)
    return false;
  if (f.ms < best.ms) best.ms = f.ms;
  best.peak_kb = std::max(best.peak_kb, f.peak_kb);
  best.rows = f.rows;
  best.check = f.check;
  return true;
}

bool prepare_sqlite_file(const std::string& path, long rows) {
  std::remove(path.c_str());
  sqlite3* db = nullptr;
  const bool ok = sqlite3_open(path.c_str(), &db) == SQLITE_OK &&
                  sqlite3_exec(db, fill_sql(rows).c_str(), nullptr, nullptr, nullptr) == SQLITE_OK;
  sqlite3_close(db);
  return ok;
}

bool prepare_pg(const std::string& conninfo, long rows) {
  PGconn* conn = PQconnectdb(conninfo.c_str());
  const std::string sql =
      "SET client_min_messages = warning; DROP TABLE IF EXISTS t; CREATE TABLE t (id INTEGER, s "
      "TEXT, l TEXT); INSERT INTO t SELECT "
      "i, 's' || i, lpad(i::text, 60, '0') FROM generate_series(1, " +
      std::to_string(rows) + ") AS i; ANALYZE t";
  PGresult* r = PQexec(conn, sql.c_str());
  const bool ok = PQresultStatus(r) == PGRES_COMMAND_OK;
  if (!ok) std::fprintf(stderr, "%s", PQerrorMessage(conn));
  PQclear(r);
  PQfinish(conn);
  return ok;
}

int run_all(const char* self, Options o) {
  struct Case {
    std::string engine, reader;
    long rows;
  };
  std::vector<Case> cases;
  for (const long rows : {o.rows / 10, o.rows}) {
    for (const char* engine : {"sqlite-file", "sqlite-memory"}) {
      for (const char* reader : {"/c-api", "/connect", "/typed"}) {
        cases.push_back({engine, reader, rows});
      }
    }
  }
  if (!o.pg.empty()) {
    if (!prepare_pg(o.pg, o.pg_rows)) return 1;
    for (const char* reader : {"/libpq", "/connect", "/typed"}) {
      cases.push_back({"pg", reader, o.pg_rows});
    }
  }
  std::map<std::string, Figure> figures;
  std::map<long, bool> prepared;
  for (int round = 0; round < o.rounds; ++round) {
    for (const Case& c : cases) {
      if (c.engine == "sqlite-file" && !prepared[c.rows]) {
        o.db = "vexel_cursor_bench_" + std::to_string(c.rows) + ".db";
        if (!prepare_sqlite_file(o.db, c.rows)) return 1;
        prepared[c.rows] = true;
      }
      o.db = "vexel_cursor_bench_" + std::to_string(c.rows) + ".db";
      const std::string key = c.engine + c.reader + " " + std::to_string(c.rows);
      if (!measure(self, o, c.engine + c.reader, c.rows, figures[key])) {
        std::fprintf(stderr, "vexel_cursor_bench: %s failed\n", key.c_str());
        return 1;
      }
    }
  }
  std::printf(
      "| engine | rows | C API ms | CConnect reads ms | ratio | typed reads ms | ratio | "
      "C API peak MB | CConnect peak MB | typed peak MB |\n"
      "|---|--:|--:|--:|--:|--:|--:|--:|--:|--:|\n");
  for (size_t i = 0; i + 2 < cases.size(); i += 3) {
    const std::string rows = " " + std::to_string(cases[i].rows);
    const Figure& api = figures[cases[i].engine + cases[i].reader + rows];
    const Figure& conn = figures[cases[i + 1].engine + cases[i + 1].reader + rows];
    const Figure& typed = figures[cases[i + 2].engine + cases[i + 2].reader + rows];
    if (api.check != conn.check || api.rows != conn.rows || api.check != typed.check) {
      std::fprintf(stderr, "vexel_cursor_bench: %s read other values\n", cases[i].engine.c_str());
      return 1;
    }
    std::printf("| %s | %lld | %.0f | %.0f | %.2f | %.0f | %.2f | %.1f | %.1f | %.1f |\n",
                cases[i].engine.c_str(), api.rows, api.ms, conn.ms, conn.ms / api.ms, typed.ms,
                typed.ms / api.ms, api.peak_kb / 1024.0, conn.peak_kb / 1024.0,
                typed.peak_kb / 1024.0);
  }
  for (const auto& entry : prepared) {
    std::remove(("vexel_cursor_bench_" + std::to_string(entry.first) + ".db").c_str());
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  Options o;
  for (int i = 1; i + 1 < argc; i += 2) {
    const std::string flag = argv[i], value = argv[i + 1];
    if (flag == "--rows") o.rows = std::atol(value.c_str());
    if (flag == "--pg-rows") o.pg_rows = std::atol(value.c_str());
    if (flag == "--rounds") o.rounds = std::atoi(value.c_str());
    if (flag == "--reader") o.reader = value;
    if (flag == "--db") o.db = value;
    if (flag == "--pg") o.pg = value;
  }
  if (!o.reader.empty()) return run_reader(o);
  return run_all("/proc/self/exe", o);
}
