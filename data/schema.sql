-- The tables of a vehicle database. EMPTY.MDB is made of this file and the texts in catalogue/.
--
-- Column types tell the program what a column is: VARCHAR(n) text of at most n characters, TINYINT
-- 0 to 255, SMALLINT 16 bits, INTEGER 32 bits, CURRENCY an amount, BLOB bytes. No column and no
-- index asks for anything that a plain sqlite3 shell lacks.

PRAGMA application_id = 1280265025; -- "LOKA"
PRAGMA user_version = 1;

-- One vehicle or function unit a row. The short columns stand first, so that a search need not read
-- past the arrays and pictures.
CREATE TABLE LOCO_DAT (
  DC_RECNO     INTEGER PRIMARY KEY AUTOINCREMENT, -- a number is never used twice
  DC_ADR       SMALLINT,     -- decoder address, 1 to 10239
  DC_COLL      VARCHAR(24),  -- collection; the empty text is a collection, Null is none
  DC_TYPE      SMALLINT,     -- 1 vehicle, 2 function unit, 3 other
  DC_MANUF     SMALLINT,     -- decoder maker, see DCMANUFS
  DC_DECODER   VARCHAR(8),   -- decoder type, with DC_MANUF see DECODERS
  DC_DEC_VER   VARCHAR(50),  -- name of the CV set that was current at the last save
  DC_CV_NAME   VARCHAR(50),
  DC_CV_NAME_1 VARCHAR(50),
  DC_CV_NAME_2 VARCHAR(50),
  DC_CV_NAME_3 VARCHAR(50),
  DC_CV_NAME_4 VARCHAR(50),
  ST_SNAME     VARCHAR(6),   -- short name
  ST_GROUP     SMALLINT,
  FZ_LNAME     VARCHAR(40),  -- long description
  FZ_FTYPE     VARCHAR(50),
  FZ_CODE      VARCHAR(12),  -- class
  FZ_OPCODE    VARCHAR(8),   -- running number
  FZ_MAXSPEED  SMALLINT,
  FZ_LINE      VARCHAR(50),
  FZ_ERA       VARCHAR(50),
  MD_MANUF     VARCHAR(50),
  MD_CATNO     VARCHAR(16),
  MD_SCALE     VARCHAR(16),
  MD_PRICE     CURRENCY,
  MD_MOTOR     VARCHAR(50),
  MD_INFO      VARCHAR(255),
  MD_USER_1    VARCHAR(40),
  MD_USER_2    VARCHAR(40),
  MD_USER_3    VARCHAR(40),
  -- Five CV sets: values and marks, byte k for the CV of internal index k + 1, 4865 bytes each.
  DC_CV        BLOB,
  DC_CV_ST     BLOB,
  DC_CV_1      BLOB,
  DC_CV_1_ST   BLOB,
  DC_CV_2      BLOB,
  DC_CV_2_ST   BLOB,
  DC_CV_3      BLOB,
  DC_CV_3_ST   BLOB,
  DC_CV_4      BLOB,
  DC_CV_4_ST   BLOB,
  MD_PIC       BLOB          -- picture file: BMP, JPEG or PNG
);
-- A collection holds an address once. This index also carries the default order.
CREATE UNIQUE INDEX LOCO_DAT_COLL_ADR ON LOCO_DAT (DC_COLL COLLATE NOCASE, DC_ADR);
CREATE INDEX LOCO_DAT_ADR ON LOCO_DAT (DC_ADR);
CREATE INDEX LOCO_DAT_DECODER ON LOCO_DAT (DC_MANUF, DC_DECODER);

-- Decoder makers. Row 0 always exists.
CREATE TABLE DCMANUFS (
  DC_MANUF_SEQ  SMALLINT,
  DC_MANUF      SMALLINT NOT NULL PRIMARY KEY,
  DC_MANUF_TEXT VARCHAR(50)  -- also the name of the folder of its description files
);

-- Decoder types. The name is the stem of the description file.
CREATE TABLE DECODERS (
  DC_SEQ     SMALLINT,
  DC_DECODER VARCHAR(8) NOT NULL,
  DC_MANUF   SMALLINT NOT NULL,
  PRIMARY KEY (DC_MANUF, DC_DECODER COLLATE NOCASE)
);

-- Reference lists of the drop-downs. Vehicles hold a copy of the text, no key.
CREATE TABLE MANUFS (MD_MANUF_SEQ SMALLINT, MD_MANUF VARCHAR(50));
CREATE TABLE MOTORS (MD_MOTOR_SEQ SMALLINT, MD_MOTOR VARCHAR(50));
CREATE TABLE ERAS   (FZ_ERA_SEQ   SMALLINT, FZ_ERA   VARCHAR(50));
CREATE TABLE LINES  (FZ_LINE_SEQ  SMALLINT, FZ_LINE  VARCHAR(50));
CREATE TABLE FTYPES (FZ_FTYPE_SEQ SMALLINT, FZ_FTYPE VARCHAR(50));
