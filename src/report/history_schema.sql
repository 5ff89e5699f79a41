CREATE TABLE runs(
    run INTEGER PRIMARY KEY, -- 1, 2 ...
    began INTEGER NOT NULL, -- seconds since 1970, UTC
    out TEXT NOT NULL, -- folder
    arguments TEXT NOT NULL,
    pairs INTEGER NOT NULL, -- how many were compared
    passed INTEGER NOT NULL, -- of these
    UNIQUE(out, began));
CREATE TABLE pairs(
    pair INTEGER PRIMARY KEY,
    path TEXT NOT NULL UNIQUE);
CREATE TABLE visits( -- a pair was part of all runs from the first to the last
    pair INTEGER NOT NULL,
    first_run INTEGER NOT NULL,
    last_run INTEGER NOT NULL,
    PRIMARY KEY(pair, first_run)) WITHOUT ROWID;
CREATE TABLE failures( -- a pair did not pass in a run
    run INTEGER NOT NULL,
    pair INTEGER NOT NULL,
    grade INTEGER NOT NULL, -- 1 to 5, 6 none, 7 no data
    findings INTEGER NOT NULL, -- how many, those not kept too
    abs_err REAL, -- of the worst finding, as below
    rel_err REAL,
    first_bad INTEGER NOT NULL, -- run since when it does not pass
    last_good INTEGER, -- last run before that which it passed
    known_run INTEGER, -- newest run up to this in which all of its findings are known
    PRIMARY KEY(run, pair)) WITHOUT ROWID;
CREATE TABLE signals(
    signal INTEGER PRIMARY KEY,
    pair INTEGER NOT NULL,
    key TEXT NOT NULL, -- as in result.json
    analysis TEXT NOT NULL,
    name TEXT NOT NULL,
    UNIQUE(pair, key));
CREATE TABLE findings( -- a signal failed in a run
    run INTEGER NOT NULL,
    signal INTEGER NOT NULL,
    abs_err REAL, -- 'nan' where it is no number, NULL where there is none
    rel_err REAL,
    first_bad INTEGER NOT NULL, -- as of a pair
    last_good INTEGER,
    PRIMARY KEY(run, signal)) WITHOUT ROWID;
CREATE INDEX findings_of_signal ON findings(signal, run);
