-- The payment concepts of the receipts, by rising code.
CREATE PROCEDURE dbo.TRU_CONCEPTOS
AS
BEGIN
    SET NOCOUNT ON;
    SELECT C_CONCEPTO, D_CONCEPTO FROM dbo.conceptos ORDER BY C_CONCEPTO;
END
