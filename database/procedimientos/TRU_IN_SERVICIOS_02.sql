-- A new service. Its code is the one after the largest code, while that stays
-- within 100 (the program keeps services by code 0 to 100); past it, the
-- lowest free code from 1. The percentage comes with a decimal comma (read by
-- num_coma); the letter is kept as one capital; the status starts as 'A' and
-- the day's rate (MONTO) at 0 until the rate panel stores one.
--@param @descripcion TEXT = ''
--@param @porcentaje TEXT = '0'
--@param @decimales INTEGER = 2
--@param @sw_calculos INTEGER = 1
--@param @letra TEXT = ''
WITH RECURSIVE codigos(c) AS (SELECT 1 UNION ALL SELECT c + 1 FROM codigos WHERE c < 100)
INSERT INTO servicios (C_SERVIcio, D_SERVIcio, porcentaje, decimales, sw_calculos, letra, St_servicio, MONTO)
SELECT COALESCE((SELECT MAX(C_SERVIcio) + 1 FROM servicios HAVING MAX(C_SERVIcio) < 100),
                (SELECT MIN(c) FROM codigos WHERE c NOT IN (SELECT C_SERVIcio FROM servicios))),
       substr(@descripcion, 1, 60), num_coma(@porcentaje), COALESCE(@decimales, 2), COALESCE(@sw_calculos, 1),
       upper(substr(trim(@letra), 1, 1)), 'A', 0;
