-- Purpose: Locations of the inventory system: stock rooms and wards that hold supplies.
-- Kept by: the inventory system.
-- Columns: LocationID is the key, Location the name; Status is A (active) or I (inactive).
IF OBJECT_ID('dbo.tbInvLocation', 'U') IS NULL
CREATE TABLE dbo.tbInvLocation (
    LocationID varchar(10) NOT NULL,
    Location varchar(100) NULL,
    Status varchar(1) NULL,
    CONSTRAINT PK_tbInvLocation PRIMARY KEY (LocationID)
);
