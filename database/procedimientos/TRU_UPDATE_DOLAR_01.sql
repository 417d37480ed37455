-- The four wallet prices of the day (TRUMIN, ZELLE, ZINLI, AMAZON), with a
-- decimal comma, read by num_coma, and the moment of the store, kept the way
-- the screen shows it. The table keeps one row: it is made when missing.
--@param @fecha DATETIME = NULL
--@param @trumin TEXT = '0'
--@param @zelle TEXT = '0'
--@param @zinli TEXT = '0'
--@param @amazon TEXT = '0'
UPDATE dolar_NEW
SET Fecha = strftime('%d/%m/%Y %H:%M:%S', COALESCE(@fecha, GETDATE())),
    TRUMIN = num_coma(@trumin), ZELLE = num_coma(@zelle), ZINLI = num_coma(@zinli), AMAZON = num_coma(@amazon);
INSERT INTO dolar_NEW (Fecha, TRUMIN, ZELLE, ZINLI, AMAZON)
SELECT strftime('%d/%m/%Y %H:%M:%S', COALESCE(@fecha, GETDATE())), num_coma(@trumin), num_coma(@zelle),
       num_coma(@zinli), num_coma(@amazon)
WHERE NOT EXISTS (SELECT 1 FROM dolar_NEW);
