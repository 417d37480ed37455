-- A new payment concept under the next code above the largest one, with up to
-- 100 characters of its description as typed.
--@param @descripcion TEXT = ''
INSERT INTO conceptos (C_CONCEPTO, D_CONCEPTO)
SELECT COALESCE(MAX(C_CONCEPTO), 0) + 1, substr(@descripcion, 1, 100)
FROM conceptos;
