// duckdb.mjs DATABASE THREADS LOAD TIMES SQL...: runs the statements TIMES times, after LOAD once, with so many threads in a
// database ("" is one in memory); prints the number that the last statement answers. "{}" in a statement stands for
// the number of the turn, from 0.
import {createRequire} from 'node:module';

const [database, threads, load, times, ...statements] = process.argv.slice(2);
const require = createRequire(`${process.env.ZU_BENCH_MODULES}/package.json`);
const {DuckDBInstance} = require('@duckdb/node-api');

const instance = await DuckDBInstance.create(database || ':memory:', {threads});
const connection = await instance.connect();
if (load) await connection.run(load);
let result = 0;
for (let turn = 0; turn < Number(times); turn++) {
    for (const statement of statements) {
        const rows = (await connection.runAndReadAll(statement.replaceAll('{}', String(turn)))).getRows();
        // Many rows stand for a sum over their first column, which the program makes as a client would.
        result = rows.length === 1 ? rows[0][0] : rows.reduce((sum, row) => sum + Number(row[0]), 0);
    }
}
console.log(String(result));
