-- The four wallet prices of the day (decimal comma) and the moment of the
-- store; the one row is made when missing.
CREATE PROCEDURE dbo.TRU_UPDATE_DOLAR_01
    @fecha datetime = NULL,
    @trumin varchar(30) = '0',
    @zelle varchar(30) = '0',
    @zinli varchar(30) = '0',
    @amazon varchar(30) = '0'
AS
BEGIN
    SET NOCOUNT ON;
    UPDATE dbo.dolar_NEW
    SET Fecha = COALESCE(@fecha, GETDATE()), TRUMIN = dbo.num_coma(@trumin), ZELLE = dbo.num_coma(@zelle),
        ZINLI = dbo.num_coma(@zinli), AMAZON = dbo.num_coma(@amazon);
    IF NOT EXISTS (SELECT 1 FROM dbo.dolar_NEW)
        INSERT INTO dbo.dolar_NEW (Fecha, TRUMIN, ZELLE, ZINLI, AMAZON)
        VALUES (COALESCE(@fecha, GETDATE()), dbo.num_coma(@trumin), dbo.num_coma(@zelle), dbo.num_coma(@zinli),
                dbo.num_coma(@amazon));
END
