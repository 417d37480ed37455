-- A new USDT price row. Its code is the one after the largest while that stays
-- within 100 (the program keeps these rows by code 0 to 100), else the lowest
-- free code from 1. It starts with both prices at 0 and div 0, so its service
-- is priced 0 until the operator sets them. The equivalence (the service it
-- prices) comes as a whole number; the USDT services screen sends none, and
-- the row then prices no service (0).
--@param @descripcion TEXT = ''
--@param @equivalencia REAL = 0
WITH RECURSIVE codigos(c) AS (SELECT 1 UNION ALL SELECT c + 1 FROM codigos WHERE c < 100)
INSERT INTO servicios_usdt (C_SERVIcio, D_SERVIcio, compra, venta, equivalencia, div)
SELECT COALESCE((SELECT MAX(C_SERVIcio) + 1 FROM servicios_usdt HAVING MAX(C_SERVIcio) < 100),
                (SELECT MIN(c) FROM codigos WHERE c NOT IN (SELECT C_SERVIcio FROM servicios_usdt))),
       substr(upper(@descripcion), 1, 60), 0, 0, CAST(COALESCE(@equivalencia, 0) AS INTEGER), 0;
