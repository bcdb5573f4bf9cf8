-- The tables of a small shop.
CREATE TABLE IF NOT EXISTS goods (
    id INTEGER PRIMARY KEY,
    name VARCHAR(80) NOT NULL UNIQUE,
    price DECIMAL(10, 2) DEFAULT 0.00 CHECK (price >= 0),
    added TIMESTAMP DEFAULT CURRENT_TIMESTAMP,
    note TEXT NULL
);

/* Orders point at goods
   and at people. */
CREATE TABLE orders (
    id BIGINT,
    goods_id INT REFERENCES goods(id) ON DELETE CASCADE,
    amount SMALLINT NOT NULL,
    "odd name" CHAR(1),
    `other` BOOLEAN DEFAULT FALSE
);

CREATE INDEX by_name ON goods (name ASC, price DESC);
// a comment of another kind

INSERT INTO goods (id, name, price) VALUES
    (1, 'apple', 0.5),
    (2, 'it''s a pear', 1.25),
    (3, 'say \'hi\'', .75),
    (0x1F, "double", 1e3);

SELECT g.name, COUNT(*) AS orders, SUM(o.amount * g.price) total
FROM goods g
LEFT OUTER JOIN orders AS o ON o.goods_id = g.id
WHERE g.price <> 0 AND g.price <= 100 OR NOT g.name LIKE 'a%'
GROUP BY g.name
HAVING SUM(o.amount) > 10 -- only the popular ones
ORDER BY total DESC, g.name
LIMIT 10 OFFSET 5;

UPDATE goods SET price = price * 1.1 - 0.01, note = 'first line
second line' WHERE id IN (1, 2, 3) AND note IS NULL;

DELETE FROM orders WHERE amount != 0 AND id BETWEEN 10 AND 20;

WITH RECURSIVE numbers(n) AS (
    SELECT 1
    UNION ALL
    SELECT n + 1 FROM numbers WHERE n < 100
)
SELECT n, n % 2, n || '-th', CASE WHEN n > 50 THEN 'big' ELSE 'small' END FROM numbers;

begin;
alter table goods add column weight float;
create view cheap as select * from goods where price < 1;
select max(price), min(price), cast(avg(price) as int) from cheap; commit;
