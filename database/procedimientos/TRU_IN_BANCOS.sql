-- A bank as the operator types it: its national code and its name (up to 60
-- characters). The code is the operator's own; an empty code (or 0) takes the
-- next code above the largest one. A code that exists already keeps its key
-- and takes the new name, so that a bank misnamed at its entry can be mended
-- from the same screen, which has no other way to change a row. A code that
-- is not a number is refused by the server's conversion.
--@param @codigo INTEGER = 0
--@param @descripcion TEXT = ''
INSERT INTO bancos (C_Banco, D_banco)
SELECT COALESCE(NULLIF(@codigo, 0), (SELECT COALESCE(MAX(C_Banco), 0) + 1 FROM bancos)), substr(@descripcion, 1, 60)
WHERE 1
ON CONFLICT (C_Banco) DO UPDATE SET D_banco = excluded.D_banco;
