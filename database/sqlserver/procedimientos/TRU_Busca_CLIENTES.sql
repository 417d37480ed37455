-- Clients found by any part of the name (capitals and accents or not), or by their code
-- when the text is all digits; an empty text lists every client. The text is
-- taken literally.
CREATE PROCEDURE dbo.TRU_Busca_CLIENTES
    @texto varchar(100) = ''
AS
BEGIN
    SET NOCOUNT ON;
    SELECT C_CLIENTE, D_cliente, Revisar
    FROM dbo.clientes
    WHERE @texto = ''
       OR CHARINDEX(@texto COLLATE Latin1_General_CI_AI, D_cliente COLLATE Latin1_General_CI_AI) > 0
       OR (@texto NOT LIKE '%[^0-9]%' AND LEN(@texto) <= 9 AND C_CLIENTE = CAST(@texto AS int))
    ORDER BY D_cliente, C_CLIENTE;
END
