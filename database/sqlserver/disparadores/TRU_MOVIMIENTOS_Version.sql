-- The versions of the transactions (MOVIMIENTOS_VERSION): each row inserted or
-- updated takes the next values of the counter, a deleted row loses its
-- version row, and an update that changes the key moves it. The counter is
-- raised by an UPDATE, whose lock on its one row is held to the end of the
-- statement's transaction, so no two writers give the same number. It fires
-- also for the rows that TRU_MOVIMIENTOS_Secuencia inserts in its place.
CREATE TRIGGER dbo.TRU_MOVIMIENTOS_Version ON dbo.MOVIMIENTOS
AFTER INSERT, UPDATE, DELETE
AS
BEGIN
    SET NOCOUNT ON;
    DELETE v
    FROM dbo.MOVIMIENTOS_VERSION AS v
    WHERE EXISTS (SELECT 1 FROM deleted AS d WHERE d.FECHA = v.FECHA AND d.SECUENCIA = v.SECUENCIA)
      AND NOT EXISTS (SELECT 1 FROM inserted AS i WHERE i.FECHA = v.FECHA AND i.SECUENCIA = v.SECUENCIA);
    DECLARE @filas bigint, @ultima bigint;
    SELECT @filas = COUNT(*) FROM inserted;
    IF @filas = 0
        RETURN;
    UPDATE dbo.MOVIMIENTOS_CONTADOR SET ultima = ultima + @filas;
    SELECT @ultima = ultima FROM dbo.MOVIMIENTOS_CONTADOR;
    DECLARE @nuevas TABLE (FECHA varchar(8) COLLATE DATABASE_DEFAULT NOT NULL, SECUENCIA int NOT NULL,
                           version bigint NOT NULL, PRIMARY KEY (FECHA, SECUENCIA));
    INSERT INTO @nuevas (FECHA, SECUENCIA, version)
    SELECT FECHA, SECUENCIA, @ultima - @filas + ROW_NUMBER() OVER (ORDER BY FECHA, SECUENCIA)
    FROM inserted;
    UPDATE v
    SET version = n.version
    FROM dbo.MOVIMIENTOS_VERSION AS v
    JOIN @nuevas AS n ON n.FECHA = v.FECHA AND n.SECUENCIA = v.SECUENCIA;
    INSERT INTO dbo.MOVIMIENTOS_VERSION (FECHA, SECUENCIA, version)
    SELECT n.FECHA, n.SECUENCIA, n.version
    FROM @nuevas AS n
    WHERE NOT EXISTS (SELECT 1 FROM dbo.MOVIMIENTOS_VERSION AS v WHERE v.FECHA = n.FECHA AND v.SECUENCIA = n.SECUENCIA);
END
