-- Group 3 of a database without demo data, whose stream is excelstream_golden.txt.
-- Pipe type 1 has rows but no material name (GOODS of line 1): it is left out.
UPDATE ex_kanzai SET GOODS='給水' WHERE CTG='1' AND GRP='3' AND KAN='1' AND NO='2';
UPDATE ex_kanzai SET SIZE='15A', CI='ｍ', GROSS='560' WHERE CTG='1' AND GRP='3' AND KAN='1' AND NO='1';
-- Pipe type 2, piping mode, with a detail without sizes.
UPDATE ex_kanzai SET GOODS='配管用炭素鋼鋼管（白）', KIND='屋内一般' WHERE CTG='1' AND GRP='3' AND KAN='2' AND NO='1';
UPDATE ex_kanzai SET GOODS='通気' WHERE CTG='1' AND GRP='3' AND KAN='2' AND NO='2';
UPDATE ex_kanzai SET GOODS='ねじ接合' WHERE CTG='1' AND GRP='3' AND KAN='2' AND NO='3';
UPDATE ex_kanzai SET GOODS='公共建築' WHERE CTG='1' AND GRP='3' AND KAN='2' AND NO='4';
UPDATE ex_kanzai SET GOODS='P.12' WHERE CTG='1' AND GRP='3' AND KAN='2' AND NO='5';
UPDATE ex_kanzai SET KIND='機械室・便所(2)' WHERE CTG='1' AND GRP='3' AND KAN='2' AND NO='16';
UPDATE ex_kanzai SET KIND='屋外架空(2)' WHERE CTG='1' AND GRP='3' AND KAN='2' AND NO='31';
UPDATE ex_kanzai SET DATA5='24200', SIZE='60A' WHERE CTG='1' AND GRP='3' AND KAN='2' AND NO='60';
UPDATE ex_kanzai SET SIZE='15A', CI='ｍ', GROSS='560', DATA1='1.1', DATA2='0.55', DATA3='0.05', DATA4='0.1', DATA5='0.123', DATA6='0.015', DATA7='0.1', CALC1_G='616', CALC2_G='308', CALC3_G='28', CALC4_G='56', CALC5_G='2976.6', CALC6_G='44.65', CALC7_G='302.1', GTANKA='4331.35', FTANKA='4330', CALC1_N='1' WHERE CTG='1' AND GRP='3' AND KAN='2' AND NO='1';
-- Line 2 has no size: no row on the sheet.
UPDATE ex_kanzai SET CI='ｍ', GROSS='800', DATA1='1.1' WHERE CTG='1' AND GRP='3' AND KAN='2' AND NO='2';
UPDATE ex_kanzai SET SIZE='25A', CI='ｍ', GROSS='1090', DATA1='1.1', DATA2='0.55', DATA3='0.05', DATA4='0.1', DATA5='0.185', DATA6='0.015', DATA7='0.1', CALC1_G='1199', CALC2_G='599.5', CALC3_G='54.5', CALC4_G='109', CALC5_G='4477', CALC6_G='67.15', CALC7_G='454.4', GTANKA='6960.55', FTANKA='6960' WHERE CTG='1' AND GRP='3' AND KAN='2' AND NO='3';
-- Detail 2 (lines 16 to 29) has no size at all.
UPDATE ex_kanzai SET SIZE='15A', CI='ｍ', GROSS='560', DATA1='1.05', DATA2='0.36', DATA3='0.04', DATA4='0.12', DATA5='0.111', DATA6='0', DATA7='0.1', CALC1_G='588', CALC2_G='201.6', CALC3_G='22.4', CALC4_G='67.2', CALC5_G='2686.2', CALC6_G='0', CALC7_G='268.6', GTANKA='3834', FTANKA='3830' WHERE CTG='1' AND GRP='3' AND KAN='2' AND NO='31';
-- Line 15 of a detail is never exported.
UPDATE ex_kanzai SET SIZE='99A', CI='ｍ', GROSS='1' WHERE CTG='1' AND GRP='3' AND KAN='2' AND NO='45';
UPDATE ex_kanzai SET SIZE='20A', CI='ｍ', GROSS='700', DATA1='1.05', DATA2='0.25', DATA3='0.03', DATA4='0', DATA5='0.1', DATA6='0', DATA7='0.1', CALC1_G='735', CALC2_G='175', CALC3_G='21', CALC4_G='0', CALC5_G='2420', CALC6_G='0', CALC7_G='242', GTANKA='3593', FTANKA='3590' WHERE CTG='1' AND GRP='3' AND KAN='2' AND NO='59';
-- Pipe type 20, after 17 empty positions.
UPDATE ex_kanzai SET GOODS='冷媒用銅管' WHERE CTG='1' AND GRP='3' AND KAN='20' AND NO='1';
UPDATE ex_kanzai SET GOODS='冷媒' WHERE CTG='1' AND GRP='3' AND KAN='20' AND NO='2';
UPDATE ex_kanzai SET GOODS='溶接接合' WHERE CTG='1' AND GRP='3' AND KAN='20' AND NO='3';
UPDATE ex_kanzai SET DATA5='' WHERE CTG='1' AND GRP='3' AND KAN='20' AND NO='60';
-- A text in a number column reads as 0, in a sum too.
UPDATE ex_kanzai SET SIZE='6.35', CI='ｍ', GROSS='300', DATA1='1.1', DATA2='0.35', DATA3='0.12', DATA4='0.05', DATA5='0.045', DATA6='', DATA7='0.1', CALC1_G='330', CALC2_G='abc', CALC3_G='36', CALC4_G='15', CALC5_G='1089', CALC6_G='0', CALC7_G='108.9', GTANKA='1700', FTANKA='1700' WHERE CTG='1' AND GRP='3' AND KAN='20' AND NO='1';
