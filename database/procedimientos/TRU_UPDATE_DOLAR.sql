-- The plain dollar screen stores its one price: the moment of the store (kept
-- the way that screen shows it, dd/mm/yyyy hh:mm:ss) and the price, which
-- arrives with a decimal point and is read by num_coma. The table keeps one
-- row: it is made when missing.
--@param @fecha DATETIME = NULL
--@param @valor TEXT = '0'
UPDATE dolar
SET Fecha = strftime('%d/%m/%Y %H:%M:%S', COALESCE(@fecha, GETDATE())), valor = num_coma(@valor);
INSERT INTO dolar (Fecha, valor)
SELECT strftime('%d/%m/%Y %H:%M:%S', COALESCE(@fecha, GETDATE())), num_coma(@valor)
WHERE NOT EXISTS (SELECT 1 FROM dolar);
