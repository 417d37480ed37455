-- The rows that the program reads without looking. The access code '0000'
-- is a placeholder: set the business's own with
--     UPDATE parametros SET Clave = '....'
IF NOT EXISTS (SELECT 1 FROM dbo.parametros)
    INSERT INTO dbo.parametros (Clave, Fecha, Fecha_Compraventas, Dolar) VALUES ('0000', GETDATE(), GETDATE(), 0);
IF NOT EXISTS (SELECT 1 FROM dbo.dolar)
    INSERT INTO dbo.dolar (Fecha, valor) VALUES (GETDATE(), 0);
IF NOT EXISTS (SELECT 1 FROM dbo.dolar_NEW)
    INSERT INTO dbo.dolar_NEW (Fecha, TRUMIN, ZELLE, ZINLI, AMAZON) VALUES (GETDATE(), 0, 0, 0, 0);
IF NOT EXISTS (SELECT 1 FROM dbo.servicios_usdt WHERE C_SERVIcio = 1)
    INSERT INTO dbo.servicios_usdt (C_SERVIcio, D_SERVIcio, compra, venta, equivalencia, div) VALUES (1, 'DOLAR REFERENCIA', 0, 0, 0, 0);
IF NOT EXISTS (SELECT 1 FROM dbo.servicios_usdt WHERE C_SERVIcio = 2)
    INSERT INTO dbo.servicios_usdt (C_SERVIcio, D_SERVIcio, compra, venta, equivalencia, div) VALUES (2, 'USDT BASE', 0, 0, 0, 0);
IF NOT EXISTS (SELECT 1 FROM dbo.bancos_zelle WHERE C_Banco = 0)
    INSERT INTO dbo.bancos_zelle (C_Banco, D_banco) VALUES (0, 'NINGUNO');
-- The entry screen starts on the letter T of TRUMIN.
IF NOT EXISTS (SELECT 1 FROM dbo.servicios)
    INSERT INTO dbo.servicios (C_SERVIcio, D_SERVIcio, porcentaje, decimales, sw_calculos, letra, St_servicio, MONTO) VALUES
        (1, 'TRUMIN', 9, 2, 1, 'T', 'A', 0), (2, 'ZELLE', 6, 2, 1, 'Z', 'A', 0),
        (3, 'ZINLI', 4, 2, 1, 'I', 'A', 0), (4, 'AMAZON', 15, 2, 1, 'A', 'A', 0);
-- The counter of the transactions' versions starts at 0, and is never put back.
IF NOT EXISTS (SELECT 1 FROM dbo.MOVIMIENTOS_CONTADOR)
    INSERT INTO dbo.MOVIMIENTOS_CONTADOR (ultima) VALUES (0);
