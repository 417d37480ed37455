-- The last sequence used on a date (0 for a day without transactions); the
-- entry screen numbers the next transaction from it. A second set tells how
-- many transactions the day has.
--@param @fecha TEXT = ''
SELECT COALESCE(MAX(SECUENCIA), 0) AS secuenciA
FROM MOVIMIENTOS WHERE FECHA = @fecha;

SELECT COUNT(*) AS cuantas
FROM MOVIMIENTOS WHERE FECHA = @fecha;
