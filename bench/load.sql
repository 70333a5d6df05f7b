-- Loads orders.csv, as zugenerate writes it, into the table of the same form.
CREATE TABLE orders (
    deleted INTEGER, id INTEGER, customer TEXT, country TEXT, ordered TEXT, amount REAL, qty INTEGER, paid INTEGER, rate REAL,
    note TEXT, code TEXT);
.mode csv
.import orders.csv orders
