-- The rows of the statistics but those returned to the client: their bank is
-- '7777', blanks around it aside, as the console stores a return
-- (TRU_Filtra_Estadistica on SQL Server). Plain comparisons settle every bank
-- that starts with a character other than a blank and is not 7777 itself;
-- trim runs only on the rest.
AND (C_BANCO >= '!' AND (C_BANCO < '7777' OR C_BANCO >= '7777!') OR trim(C_BANCO) <> '7777')
