#pragma once
// The file of one entry of the standard labour library: 60 records of 376
// bytes, record n the byte image of row n of a pipe type. No header, no
// version, no checksum: the byte image is the whole interface, and files
// move between installations as they are.
//
// A record, offsets in bytes, integers little-endian, strings one length
// byte and then that many code page 932 bytes in a field of fixed width:
//
//     0 UKEY   int32         144 YOSAN  int32        200 DATA3  Currency
//     4 GOODS  string[80]    148 CI     string[4]    208 DATA4  Currency
//    85 KIND   string[40]    153 (3 bytes no field)  216 DATA5  Currency
//   126 (2 bytes no field)   156 FLAG   int32        224 DATA6  Currency
//   128 SORT   Currency      160 NET    Currency     232 DATA7  Currency
//   136 SIZE   string[6]     168 GROSS  Currency     240 NTANKA Currency
//   143 (1 byte no field)    176 TEIKA  Currency     248 GTANKA Currency
//                            184 DATA1  Currency     256 FTANKA Currency
//                            192 DATA2  Currency     264 the place of the
//                                                        14 CALC amounts
//
// Currency is its raw signed 64-bit value (the value times 10000).

#include "shell/settingsfiles.h" // FileError
#include "store/piperow.h"

#include <QByteArray>
#include <QString>

#include <array>
#include <cstdint>

constexpr int FdkRecordSize = 376;
constexpr int FdkRecordCount = 60;
constexpr std::int64_t FdkFileSize = std::int64_t(FdkRecordSize) * FdkRecordCount;
// An entry gives back rows 1 to 59; record 60 (the options) is never read.
constexpr int FdkReadRows = 59;

// Where the fields stand in a record.
namespace FdkOffset {
constexpr int UKEY = 0;
constexpr int GOODS = 4;
constexpr int KIND = 85;
constexpr int SORT = 128;
constexpr int SIZE = 136;
constexpr int YOSAN = 144;
constexpr int CI = 148;
constexpr int FLAG = 156;
constexpr int NET = 160;
constexpr int GROSS = 168;
constexpr int TEIKA = 176;
constexpr int DATA1 = 184; // DATA1 to DATA7, 8 bytes apart
constexpr int NTANKA = 240;
constexpr int GTANKA = 248;
constexpr int FTANKA = 256;
constexpr int CALC = 264; // 112 bytes, never written from a row
} // namespace FdkOffset

using FdkRecord = std::array<unsigned char, FdkRecordSize>;

// The record buffer: one for the whole run of the program, held by whoever
// saves and loads entries (the library commands of the window), zeros at the
// start. A save assembles every record in it field by field and a load reads
// every record into it whole, so what no field covers carries over: the gaps
// and the CALC place keep what the buffer holds (zeros until a load reads
// other bytes into it), and the bytes behind the end of a shorter string keep
// what the record before left there. Files written by earlier installations
// show the same leftovers; readers look only at the fields.

// Puts the fields of a row into a record: every field but the CALC amounts.
// A string writes its length byte and its bytes; the rest of its field stays.
void putRowFields(const PipeRow& row, FdkRecord& record);
// Takes from a record what an entry gives back to a row: YOSAN, SIZE and
// DATA1 to DATA7. Nothing else of the row changes.
void takeLabourFields(const FdkRecord& record, PipeRow& row);

// Rows 1 to 60 as the file holds them, put together in the record buffer.
QByteArray fdkFileBytes(const RowTable& rows, FdkRecord& buffer);

// Writes rows 1 to 60 to path through the record buffer, replacing a file of
// that name. The file appears whole or not at all. Raises FileError.
void writeFdkFile(const QString& path, const RowTable& rows, FdkRecord& buffer);

// Reads records 1 to 59 through the record buffer into rows 1 to 59
// (takeLabourFields). A longer file is fine. Raises FileError when the file
// can't be opened or ends before record 59; the rows read before the failure
// keep what they took.
void readFdkFile(const QString& path, RowTable& rows, FdkRecord& buffer);
// The same from the bytes of a file; path names it in the message.
void readFdkBytes(const QByteArray& bytes, const QString& path, RowTable& rows, FdkRecord& buffer);
