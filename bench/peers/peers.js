'use strict';
// The statements S1-S5 of Vexel's reference workload, built and compiled by
// knex (toSQL(), no driver) and kysely (compile(), dummy driver) for the
// three dialects, timed per statement with process.hrtime.
//
//   node peers.js [--stmt S1,S2] [--ms 400] [--print]
//
// Prints one JSON object per line: {peer, stmt, dialect, ns} (ns per
// statement; null where a peer has no form of the statement), or with
// --print the compiled texts. Each peer renders its own text (quoted
// identifiers, bound parameters); what is compared is the work of building
// and compiling the same statement, as a host does per request.
const knexFactory = require('knex');
const kysely = require('kysely');

const DIALECTS = ['pg', 'sqlite', 'mssql'];

// ---- the host's model, as in bench/workload.cpp ---------------------------

const m = {
  upsert: [{ id: 1, name: 'a', age: 30 }, { id: 2, name: 'b', age: 40 }],
  doomed: [1, 2, 3],
  aliases: ['u', 'o', 'i', 'p'],
  cols: [],
  conds: [],
};
for (let k = 0; k < 20; ++k) m.cols.push(`${m.aliases[k % 4]}.c${k}`);
for (let k = 0; k < 10; ++k) {
  m.conds.push({ column: `${m.aliases[k % 4]}.c${k}`, text: k % 2 === 1, number: k * 10, word: `v${k}` });
}

// ---- knex -------------------------------------------------------------------

const knexClients = { pg: 'pg', sqlite: 'sqlite3', mssql: 'mssql' };
const knexes = {};
for (const d of DIALECTS) knexes[d] = knexFactory({ client: knexClients[d], useNullAsDefault: true });

const knexStatements = {
  S1: (k) =>
    [k.select('u.id', 'u.name')
      .from('app.users as u')
      .join('app.orders as o', 'u.id', 'o.user_id')
      .where('u.age', '>', 18)
      .andWhere('u.status', '=', 'active')
      .orderBy('u.name', 'desc')
      .limit(10)
      .offset(20)
      .toSQL()],
  // knex has no upsert for SQL Server.
  S2: (k, d) =>
    d === 'mssql'
      ? null
      : [k('app.users').insert(m.upsert).onConflict('id').merge(['name']).toSQL()],
  S3: (k) => [k('app.users').where('id', 3).update({ age: 31, name: 'x' }, ['id']).toSQL()],
  S4: (k) => [k('app.users').whereIn('id', m.doomed).del(['id']).toSQL()],
  S5: (k) => {
    let q = k.select(m.cols)
      .from('app.users as u')
      .join('app.orders as o', 'o.user_id', 'u.id')
      .join('app.items as i', 'i.order_id', 'o.id')
      .join('app.products as p', 'p.id', 'i.product_id');
    for (const c of m.conds) q = c.text ? q.andWhere(c.column, '=', c.word) : q.andWhere(c.column, '>', c.number);
    return [q.groupBy('u.c0', 'o.c1').orderBy([{ column: 'u.c0' }, { column: 'o.c1', order: 'desc' }, { column: 'i.c2' }]).toSQL()];
  },
};

// ---- kysely -------------------------------------------------------------------

const kyselyParts = {
  pg: [kysely.PostgresAdapter, kysely.PostgresIntrospector, kysely.PostgresQueryCompiler],
  sqlite: [kysely.SqliteAdapter, kysely.SqliteIntrospector, kysely.SqliteQueryCompiler],
  mssql: [kysely.MssqlAdapter, kysely.MssqlIntrospector, kysely.MssqlQueryCompiler],
};
const kyselys = {};
for (const d of DIALECTS) {
  const [Adapter, Introspector, Compiler] = kyselyParts[d];
  kyselys[d] = new kysely.Kysely({
    dialect: {
      createAdapter: () => new Adapter(),
      createDriver: () => new kysely.DummyDriver(),
      createIntrospector: (db) => new Introspector(db),
      createQueryCompiler: () => new Compiler(),
    },
  });
}

// A one-row MERGE, the SQL Server form of the upsert.
function kyselyMerge(db, row) {
  return db.mergeInto('app.users as t')
    .using(
      db.selectNoFrom((eb) => [eb.val(row.id).as('id'), eb.val(row.name).as('name'), eb.val(row.age).as('age')]).as('excluded'),
      't.id', 'excluded.id')
    .whenNotMatched()
    .thenInsertValues((eb) => ({ id: eb.ref('excluded.id'), name: eb.ref('excluded.name'), age: eb.ref('excluded.age') }))
    .whenMatched()
    .thenUpdateSet((eb) => ({ name: eb.ref('excluded.name') }))
    .compile();
}

const kyselyStatements = {
  S1: (db, d) => {
    let q = db.selectFrom('app.users as u')
      .innerJoin('app.orders as o', 'u.id', 'o.user_id')
      .select(['u.id', 'u.name'])
      .where('u.age', '>', 18)
      .where('u.status', '=', 'active')
      .orderBy('u.name', 'desc');
    q = d === 'mssql' ? q.offset(20).fetch(10) : q.limit(10).offset(20);
    return [q.compile()];
  },
  S2: (db, d) =>
    d === 'mssql'
      ? [kyselyMerge(db, m.upsert[0]), kyselyMerge(db, m.upsert[1])]
      : [db.insertInto('app.users').values(m.upsert)
        .onConflict((oc) => oc.column('id').doUpdateSet((eb) => ({ name: eb.ref('excluded.name') })))
        .compile()],
  S3: (db, d) => {
    const q = db.updateTable('app.users').set({ age: 31, name: 'x' }).where('id', '=', 3);
    return [(d === 'mssql' ? q.output('inserted.id') : q.returning('id')).compile()];
  },
  S4: (db, d) => {
    const q = db.deleteFrom('app.users').where('id', 'in', m.doomed);
    return [(d === 'mssql' ? q.output('deleted.id') : q.returning('id')).compile()];
  },
  S5: (db) => {
    let q = db.selectFrom('app.users as u')
      .innerJoin('app.orders as o', 'o.user_id', 'u.id')
      .innerJoin('app.items as i', 'i.order_id', 'o.id')
      .innerJoin('app.products as p', 'p.id', 'i.product_id')
      .select(m.cols);
    for (const c of m.conds) q = c.text ? q.where(c.column, '=', c.word) : q.where(c.column, '>', c.number);
    return [q.groupBy(['u.c0', 'o.c1']).orderBy('u.c0').orderBy('o.c1', 'desc').orderBy('i.c2').compile()];
  },
};

const PEERS = {
  knex: { statements: knexStatements, instances: knexes },
  kysely: { statements: kyselyStatements, instances: kyselys },
};

// ---- timing -------------------------------------------------------------------

let sink = 0;

// Nanoseconds of n statements, by the wall clock (process.hrtime).
function batch(fn, n) {
  const start = process.hrtime.bigint();
  for (let k = 0; k < n; ++k) sink += fn()[0].sql.length;
  return Number(process.hrtime.bigint() - start);
}

// Median ns per statement over batches of about 5 ms, for at least `ms`
// milliseconds.
function time(fn, ms) {
  let n = 1;
  while (batch(fn, n) < 5e6 && n < 1 << 24) n *= 2;
  const samples = [];
  const end = process.hrtime.bigint() + BigInt(ms) * 1000000n;
  while (process.hrtime.bigint() < end || samples.length < 5) samples.push(batch(fn, n) / n);
  samples.sort((a, b) => a - b);
  return samples[samples.length >> 1];
}

function main() {
  const args = process.argv.slice(2);
  const option = (name, fallback) => {
    const at = args.indexOf(name);
    return at >= 0 && at + 1 < args.length ? args[at + 1] : fallback;
  };
  const stmts = option('--stmt', 'S1,S2,S3,S4,S5').split(',');
  const ms = Number(option('--ms', '400'));
  const print = args.includes('--print');
  for (const stmt of stmts) {
    // Every form of the statement runs for a while before any is timed, so
    // that the JIT has compiled what all of them share.
    if (!print) {
      for (const d of DIALECTS) {
        for (const { statements, instances } of Object.values(PEERS)) {
          const fn = () => statements[stmt](instances[d], d);
          if (fn() === null) continue;
          const end = process.hrtime.bigint() + 150000000n;
          while (process.hrtime.bigint() < end) batch(fn, 100);
        }
      }
    }
    for (const d of DIALECTS) {
      for (const [peer, { statements, instances }] of Object.entries(PEERS)) {
        const fn = () => statements[stmt](instances[d], d);
        const first = fn();
        if (first === null) {
          if (!print) console.log(JSON.stringify({ peer, stmt, dialect: d, ns: null }));
          continue;
        }
        if (print) {
          console.log(`${peer} ${stmt}/${d}: ${first.map((c) => c.sql).join('\n    ')}`);
          continue;
        }
        console.log(JSON.stringify({ peer, stmt, dialect: d, ns: time(fn, ms) }));
      }
    }
  }
  if (sink < 0) console.log(sink);
}

main();
