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

-- Views, triggers and the rest.
CREATE OR REPLACE VIEW late_orders AS
    SELECT o.id, o.amount, g.name AS goods_name
    FROM orders o INNER JOIN goods g ON g.id = o.goods_id
    WHERE o.ordered < CURRENT_DATE - INTERVAL '7 days'
      AND EXISTS (SELECT 1 FROM people p WHERE p.id = o.person_id AND p.active = TRUE);

CREATE TRIGGER note_change
AFTER UPDATE ON goods
FOR EACH ROW
WHEN (OLD.price <> NEW.price)
BEGIN
    INSERT INTO changes (goods_id, old_price, new_price, at)
    VALUES (OLD.id, OLD.price, NEW.price, CURRENT_TIMESTAMP);
END;

CREATE FUNCTION total(goods_id INT, factor FLOAT DEFAULT 1.0) RETURNS NUMERIC AS $$
DECLARE
    result NUMERIC(12, 2) := 0;
BEGIN
    SELECT SUM(amount) * factor INTO result FROM orders WHERE orders.goods_id = $1;
    IF result IS NULL THEN
        RETURN 0;
    ELSIF result > 1e6 THEN
        RAISE NOTICE 'large: %', result;
    END IF;
    RETURN result;
END;
$$ LANGUAGE plpgsql;

MERGE INTO stock AS s
USING delivery AS d ON s.goods_id = d.goods_id
WHEN MATCHED THEN UPDATE SET s.count = s.count + d.count
WHEN NOT MATCHED THEN INSERT (goods_id, count) VALUES (d.goods_id, d.count);

SELECT name,
       price,
       RANK() OVER (PARTITION BY kind ORDER BY price DESC) AS place,
       LAG(price, 1, 0) OVER w,
       COALESCE(note, 'none') || ' (' || CAST(id AS VARCHAR) || ')'
FROM goods
WINDOW w AS (ORDER BY id ROWS BETWEEN UNBOUNDED PRECEDING AND CURRENT ROW);

GRANT SELECT, INSERT ON goods TO clerk;
REVOKE ALL PRIVILEGES ON orders FROM guest;
EXPLAIN ANALYZE SELECT * FROM goods WHERE id = ANY (ARRAY[1, 2, 3]) AND data->>'kind' = "x";
SET @count = 5; SELECT @count % 2, `order` FROM `select`;
ROLLBACK; /* nothing happened
