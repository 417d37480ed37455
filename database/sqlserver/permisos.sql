-- The program's user TRUMIN: it reads and writes the rows and runs the
-- procedures of schema dbo, and nothing more (no fixed role, no owner rights).
-- The login is the administrator's to make once on the server, with the
-- deployment's own password, before or after this script:
--     CREATE LOGIN TRUMIN WITH PASSWORD = '<password of the deployment>';
-- Run with the login present, the script makes its user in RAMIL and gives it
-- these rights; without it, nothing here runs.
IF EXISTS (SELECT 1 FROM sys.server_principals WHERE name = N'TRUMIN')
   AND NOT EXISTS (SELECT 1 FROM sys.database_principals WHERE name = N'TRUMIN')
    CREATE USER TRUMIN FOR LOGIN TRUMIN;
go
IF EXISTS (SELECT 1 FROM sys.database_principals WHERE name = N'TRUMIN')
    GRANT SELECT, INSERT, UPDATE, DELETE, EXECUTE ON SCHEMA::dbo TO TRUMIN;
