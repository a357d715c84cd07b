#!/usr/bin/python3
"""Makes the seed corpora of the fuzz targets (fuzz/corpus/<target>/).

Seeds are small on purpose: the Mac test fonts of tests/data/mac re-encoded
with their bitmap and outline resources cut short (the family records kept
whole), Basic-Latin subsets of DejaVu Sans and Inconsolata made with
fontTools, and byte-built fonts, containers, Type 1 texts and property lists
that reach the corners of each parser. Files named "claim-*" are inputs
whose lengths claim far more than they hold: none may make the library
allocate what they claim. Reproducers of fixed findings ("crash-*",
"slow-*") are kept beside them and are not made by this script.

Run with Debian's python3 (python3-fonttools): /usr/bin/python3 fuzz/make_seeds.py
"""
import io
import os
import plistlib
import struct
import zlib

from fontTools import subset, ttLib

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
MAC = os.path.join(ROOT, "tests", "data", "mac")
OUT = os.path.join(ROOT, "fuzz", "corpus")
DEJAVU = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf"
INCONSOLATA = "/usr/share/fonts/truetype/inconsolata/Inconsolata.otf"


def write(target, name, data):
    folder = os.path.join(OUT, target)
    os.makedirs(folder, exist_ok=True)
    if isinstance(data, str):
        data = data.encode("latin-1")
    with open(os.path.join(folder, name), "wb") as out:
        out.write(data)


def u16(v):
    return struct.pack(">H", v & 0xFFFF)


def u32(v):
    return struct.pack(">I", v & 0xFFFFFFFF)


def pad4(data):
    return data + b"\0" * (-len(data) % 4)


# ------------------------------------------------------------------ sfnt ---

def table_sum(data):
    data = pad4(data)
    return sum(struct.unpack(">%dI" % (len(data) // 4), data)) & 0xFFFFFFFF


def sfnt(version, tables):
    """An sfnt whose tables follow the directory back to back."""
    head = u32(version) + u16(len(tables)) + u16(0) * 3
    offset = 12 + 16 * len(tables)
    directory, body = b"", b""
    for tag, data in tables:
        directory += tag.ljust(4, b"\0") + u32(table_sum(data)) + u32(offset) + u32(len(data))
        body += pad4(data)
        offset += len(pad4(data))
    return head + directory + body


def name_table(records):
    """records: (platform, encoding, language, nameID, text bytes[, length, offset])."""
    storage, rows = b"", b""
    for record in records:
        platform, encoding, language, name_id, text = record[:5]
        length = record[5] if len(record) > 5 else len(text)
        offset = record[6] if len(record) > 6 else len(storage)
        rows += u16(platform) + u16(encoding) + u16(language) + u16(name_id) + u16(length) + u16(offset)
        storage += text
    return u16(0) + u16(len(records)) + u16(6 + len(rows)) + rows + storage


def required_tables(name):
    tables = [(tag, b"x" * 8) for tag in (b"OS/2", b"cmap", b"head", b"hhea", b"hmtx", b"maxp", b"post")]
    return tables + [(b"name", name)]


def utf16(text):
    return text.encode("utf-16-be")


def subset_font(path, text="Aa"):
    options = subset.Options()
    options.name_IDs = [0, 1, 2, 3, 4, 5, 6, 8, 16, 17]
    options.name_languages = ["*"]
    options.name_legacy = True
    options.hinting = False
    options.layout_features = ["kern"]
    font = ttLib.TTFont(path, recalcTimestamp=False)
    subsetter = subset.Subsetter(options)
    subsetter.populate(text=text)
    subsetter.subset(font)
    out = io.BytesIO()
    font.save(out)
    return out.getvalue(), font


def collection(faces, version=0x00010000):
    """A collection of standalone sfnt byte strings, each rebased."""
    offsets, body = [], b""
    start = 12 + 4 * len(faces) + (12 if version == 0x00020000 else 0)
    for face in faces:
        offsets.append(start + len(body))
        count = struct.unpack(">H", face[4:6])[0]
        rebased = bytearray(face)
        for i in range(count):
            at = 12 + 16 * i + 8
            old = struct.unpack(">I", face[at:at + 4])[0]
            rebased[at:at + 4] = u32(old + offsets[-1])
        body += pad4(bytes(rebased))
    head = b"ttcf" + u32(version) + u32(len(faces)) + b"".join(u32(o) for o in offsets)
    if version == 0x00020000:
        head += u32(0) * 3
    return head + body


# ------------------------------------------------------- resource files ---

def parse_resource_file(fork):
    data_offset, map_offset, _, map_length = struct.unpack(">IIII", fork[:16])
    rmap = fork[map_offset:map_offset + map_length]
    attributes, type_list, name_list = struct.unpack(">HHH", rmap[22:28])
    types = rmap[type_list:]
    resources = []
    for t in range(struct.unpack(">h", types[:2])[0] + 1):
        code, last, ref_list = struct.unpack(">4sHH", types[2 + 8 * t:10 + 8 * t])
        for r in range(last + 1):
            ref = types[ref_list + 12 * r:ref_list + 12 * r + 12]
            rid, name_offset, attr = struct.unpack(">hHB", ref[:5])
            offset = int.from_bytes(ref[5:8], "big")
            name = None
            if name_offset != 0xFFFF:
                at = name_list + name_offset
                name = rmap[at + 1:at + 1 + rmap[at]]
            at = data_offset + offset
            length = struct.unpack(">I", fork[at:at + 4])[0]
            resources.append((code, rid, name, attr, fork[at + 4:at + 4 + length]))
    return resources


def resource_file(resources):
    """resources: (type, id, name or None, attributes, data), grouped by type."""
    types = []
    for res in resources:
        if res[0] not in types:
            types.append(res[0])
    data, refs, names, type_list = b"", b"", b"", u16(len(types) - 1)
    refs_start = 2 + 8 * len(types)
    for code in types:
        group = [r for r in resources if r[0] == code]
        type_list += code + u16(len(group) - 1) + u16(refs_start + len(refs))
        for _, rid, name, attr, body in group:
            name_offset = 0xFFFF
            if name is not None:
                name_offset = len(names)
                names += bytes([len(name)]) + name
            refs += u16(rid) + u16(name_offset) + bytes([attr]) + len(data).to_bytes(3, "big") + u32(0)
            data += u32(len(body)) + body
    map_offset = 256 + len(data)
    map_length = 28 + len(type_list) + len(refs) + len(names)
    header = u32(256) + u32(map_offset) + u32(len(data)) + u32(map_length)
    rmap = header + u32(0) + u16(0) + u16(0) + u16(28) + u16(28 + len(type_list) + len(refs))
    return header + b"\0" * 240 + data + rmap + type_list + refs + names


def macbinary_parts(path):
    raw = open(path, "rb").read()
    name = raw[2:2 + raw[1]]
    file_type, creator = raw[65:69], raw[69:73]
    data_length, rsrc_length = struct.unpack(">II", raw[83:91])
    data_start = 128
    rsrc_start = data_start + (data_length + 127) // 128 * 128
    return name, file_type, creator, raw[data_start:data_start + data_length], raw[rsrc_start:rsrc_start + rsrc_length]


def crc16(data):
    crc = 0
    for byte in data:
        crc ^= byte << 8
        for _ in range(8):
            crc = ((crc << 1) ^ 0x1021) if crc & 0x8000 else crc << 1
            crc &= 0xFFFF
    return crc


def macbinary(name, file_type, creator, data, rsrc, version=3):
    head = bytearray(128)
    head[1] = len(name)
    head[2:2 + len(name)] = name
    head[65:69], head[69:73] = file_type, creator
    head[83:87], head[87:91] = u32(len(data)), u32(len(rsrc))
    if version == 3:
        head[102:106] = b"mBIN"
    if version >= 2:
        head[122] = 130 if version == 3 else 129
        head[123] = 129
        head[124:126] = u16(crc16(bytes(head[:124])))
    pad = lambda b: b + b"\0" * (-len(b) % 128)
    return bytes(head) + pad(data) + pad(rsrc)


def apple_container(magic, filler, entries):
    out = u32(magic) + u32(0x00020000) + filler.ljust(16, b"\0")[:16] + u16(len(entries))
    offset = 26 + 12 * len(entries)
    body = b""
    for entry_id, data in entries:
        out += u32(entry_id) + u32(offset + len(body)) + u32(len(data))
        body += data
    return out + body


def finder_info(file_type, creator):
    return file_type + creator + b"\0" * 24


def cut(resources, limit=256, keep=(b"FOND",)):
    """The resources with every data but the kept types' cut to `limit` bytes."""
    return [(c, i, n, a, d if c in keep else d[:limit]) for c, i, n, a, d in resources]


# ----------------------------------------------------------------- seeds ---

def main():
    dejavu, _ = subset_font(DEJAVU)
    inconsolata, _ = subset_font(INCONSOLATA)

    # The Mac test files, cut short.
    dfont = parse_resource_file(open(os.path.join(MAC, "dfont", "DejaVuSans.dfont"), "rb").read())
    otf_dfont = parse_resource_file(open(os.path.join(MAC, "otf-dfont", "DejaVuSans.otf.dfont"), "rb").read())
    suit_name, suit_type, suit_creator, _, suit_rsrc = macbinary_parts(os.path.join(MAC, "tt-family", "DejaVuSans.suit"))
    suit = parse_resource_file(suit_rsrc)
    serif_name, serif_type, serif_creator, _, serif_rsrc = macbinary_parts(os.path.join(MAC, "ps-family", "DejaVuSerif.bin"))
    serif = parse_resource_file(serif_rsrc)
    lwfn_name, lwfn_type, lwfn_creator, _, lwfn_rsrc = macbinary_parts(os.path.join(MAC, "ps-family", "DejaVuSerBol.bin"))
    lwfn = parse_resource_file(lwfn_rsrc)

    # A dfont whose sfnt is the small subset, under the family's own ID.
    small_dfont = resource_file([(c, i, n, a, dejavu if c == b"sfnt" else d) for c, i, n, a, d in dfont])
    small_otf_dfont = resource_file([(c, i, n, a, inconsolata if c == b"sfnt" else d) for c, i, n, a, d in otf_dfont])
    small_suit = resource_file([(c, i, n, a, dejavu if c == b"sfnt" else d[:256] if c != b"FOND" else d)
                                for c, i, n, a, d in suit])
    small_serif = resource_file(cut(serif))
    # The printer font's first chunk (its clear text) whole, later ones cut.
    small_lwfn = resource_file([(c, i, n, a, d[:1800] if i == 501 else d[:64]) for c, i, n, a, d in lwfn][:4])

    # ---- sfnt directory, naming table, platform, kerning
    mixed_names = name_table([
        (1, 0, 0, 1, b"Caf\x8e Family  "),
        (1, 1, 11, 4, "日本語フォント".encode("shift_jis")),
        (3, 1, 0x409, 6, utf16("Mixed-Bold")),
        (3, 1, 0x409, 1, utf16("Mixed")),
        (0, 3, 0, 16, utf16("Preferred Mixed")),
        (4, 0, 0, 17, utf16("Bold")),
        (3, 10, 0x411, 2, utf16("Bold \U0001F600")),
        (1, 0, 0, 6, b"\xdcn\xefcode"),
        (3, 1, 0x409, 5, b"", 0x8000, 0),
        (3, 1, 0x409, 8, b"", 12, 0xFFF0),
        (1, 0, 0, 0, b"Copyright Fuzz", 3000),
        (2, 0, 0, 4, b"ISO platform"),
    ])
    mixed = sfnt(0x00010000, required_tables(mixed_names) + [
        (b"kern", b"\0\0\0\1\0\0"), (b"GSUB", b"\0\1\0\0"), (b"ab", b"abcd")])
    japanese = sfnt(0x74727565, [(b"name", name_table([
        (1, 1, 11, 1, "ゴシック".encode("shift_jis")),
        (1, 0, 0, 6, b"Gothic-Medium"),
        (1, 0, 0, 4, "中ゴシック".encode("shift_jis")),
    ])), (b"glyf", b"\0" * 16)])
    crossplatform = sfnt(0x4F54544F, required_tables(name_table([
        (3, 1, 0x409, 1, utf16("Cross")), (3, 1, 0x409, 6, utf16("Cross-Regular")),
        (3, 1, 0x409, 5, utf16("Version 1.002;PS 001.002"))])) + [(b"kern", b"\0\0\0\0\1\2\3\4"),
                                                                  (b"CFF ", b"\1\0\4\1")])
    for target in ("sfnt_names", "sfnt_platform"):
        write(target, "dejavu-subset.ttf", dejavu)
        write(target, "inconsolata-subset.otf", inconsolata)
        write(target, "mixed-names.ttf", mixed)
        write(target, "japanese-mac.ttf", japanese)
        write(target, "crossplatform.otf", crossplatform)
        write(target, "one-entry-28-bytes", u32(0x00010000) + u16(1) + u16(0) * 3 + b"name" + u32(0) * 3)
    write("sfnt_names", "claim-name-table-4gb", (u32(0x00010000) + u16(1) + u16(0) * 3 + b"name" + u32(0) +
                                                u32(28) + u32(0xFFFFFFF0)).ljust(100, b"\xff"))
    write("sfnt_platform", "claim-kern-table-4gb", (u32(0x00010000) + u16(1) + u16(0) * 3 + b"kern" + u32(0) +
                                                    u32(4) + u32(0xFFFFFFFC)).ljust(100, b"\0"))

    # ---- collections
    ttc = collection([dejavu, inconsolata])
    write("collection", "two-faces.ttc", ttc)
    write("collection", "synthetic-v2.ttc", collection([mixed, crossplatform], 0x00020000))
    write("collection", "claim-faces-and-tables.ttc", b"ttcf" + u32(0x00010000) + u32(0xFFFFFFFF) +
          u32(16) + u32(0x00010000) + u16(0xFFFF) + u16(0) * 3 + b"glyf" + u32(0) + u32(0) + u32(0xFFFFFFFF))

    # ---- Type 1 text
    font_dict = ("%!PS-AdobeFont-1.0: Fuzz-BoldItalic 001.002\n%%Title: Fuzz-BoldItalic\n"
                 "%Version: 001.002\n%%CreationDate: Mon Jan  1 00:00:00 2024\n"
                 "11 dict begin\n/FontInfo 10 dict dup begin\n/version (001.002) readonly def\n"
                 "/Notice (Copyright (c) 2024 Adobe Systems Incorporated. All Rights Reserved.) readonly def\n"
                 "/FullName (Fuzz Bold Italic) readonly def\n/FamilyName (Fuzz) readonly def\n"
                 "/Weight (Bold) readonly def\n/ItalicAngle -12 def\nend readonly def\n"
                 "/FontName /Fuzz-BoldItalic def\n/Encoding StandardEncoding def\n"
                 "/FontMatrix [0.001 0 0 0.001 0 0] readonly def\n/FontBBox {-100 -200 1000 900} readonly def\n"
                 "currentdict end\ncurrentfile eexec\n")
    cid = ("%!PS-Adobe-3.0 Resource-CIDFont\n%%DocumentNeededResources: ProcSet (CIDInit)\n"
           "20 dict begin\n/CIDFontName /Fuzz-Light-Identity def\n/CIDFontVersion 1.004 def\n"
           "/CIDFontType 0 def\n/CIDSystemInfo 3 dict dup begin\n/Registry (Adobe) def\n"
           "/Ordering (Japan1) def\n/Supplement 4 def\nend def\n/FontInfo 3 dict dup begin\n"
           "/Notice (Copyright 2004 Linotype Library GmbH) def\n/FullName (Fuzz Light) def\nend def\n")
    mm = ("%!FontType1-1.0: FuzzMM 001.000\n/FontName /FuzzMM_400_600 def\n"
          "/WeightVector [0.25 0.75] def\n/BlendDesignPositions [[0] [1]] def\n"
          "/FullName (Fuzz MM) def /FamilyName (FuzzMM) def\n")
    write("type1", "font-dict.pfa", font_dict + "\x8f\x02\x00\xff" * 8)
    write("type1", "cid.ps", cid)
    write("type1", "multiple-master.ps", mm)
    write("type1", "pfb-segment.pfb", b"\x80\x01" + struct.pack("<I", len(font_dict)) + font_dict.encode())
    write("type1", "post-chunk", b"\x01\x00%!PS-AdobeFont-1.0: Minion-Regular 001.000\n")
    write("type1", "nested-groups.ps", "/FullName (Helvetica (Bold)) readonly def /FONTNAME /Hel\0v def "
                                       "/version [1 [2] {3}] /familyname {Fam} /notice ((unclosed")
    write("type1", "dejavu-post-501", [d for c, i, n, a, d in lwfn if i == 501][0][:2000])

    # ---- resource maps
    write("resource_map", "dfont-small", small_dfont)
    write("resource_map", "suitcase-small", small_suit)
    write("resource_map", "ps-family-small", small_serif)
    write("resource_map", "printer-font-small", small_lwfn)
    write("resource_map", "empty-map", resource_file([]))
    write("resource_map", "named-resources", resource_file([
        (b"FOND", 128, b"Fuzz Family", 0x20, b"\0" * 60), (b"NFNT", 129, None, 0, b"n"),
        (b"FOND", 130, b"", 0, b""), (b"vers", 1, b"\xff" * 255, 0xFF, b"v")]))
    write("resource_map", "claim-lengths-4gb", u32(256) + u32(0xFFFFFF00) + u32(0xFFFFFFFF) +
          u32(0xFFFFFFFF) + b"\0" * 84)

    # ---- font family records (flags, name length, name, FOND)
    fonds = {
        "serif": [(n, d) for c, i, n, a, d in serif if c == b"FOND"][0],
        "suitcase": [(n, d) for c, i, n, a, d in suit if c == b"FOND"][0],
        "dfont": [(n, d) for c, i, n, a, d in dfont if c == b"FOND"][0],
    }
    for label, (name, data) in fonds.items():
        for flags in (0, 1, 2, 4):
            write("fond", "%s-flags%d" % (label, flags), bytes([flags, len(name)]) + name + data)
    serif_fond = bytearray(fonds["serif"][1])
    serif_fond[48:50] = u16(1)
    write("fond", "double-byte-cid", bytes([0, 10]) + b"A-CIDFuzzX" + bytes(serif_fond))
    serif_fond[2:4] = u16(0x4001)
    write("fond", "double-byte-family-id", bytes([2, 9]) + b"FuzzCID-B" + bytes(serif_fond))
    write("fond", "multiple-master", bytes([2, 14]) + b"%MFuzzMM_400_6" + fonds["serif"][1])
    write("fond", "header-only", bytes([0, 1]) + b"F" + fonds["dfont"][1][:54])

    # ---- AppleSingle, AppleDouble, MacBinary
    parts = (b"Fuzz Suitcase", b"FFIL", b"DMOV", b"", resource_file(cut(suit, 64)))
    name, ftype, creator, data, rsrc = parts
    apple_single = apple_container(0x00051600, b"", [(3, name), (9, finder_info(ftype, creator)), (1, b"data fork"), (2, rsrc)])
    plain_double = apple_container(0x00051607, b"", [(9, finder_info(ftype, creator)), (2, rsrc)])
    macos_double = apple_container(0x00051607, b"Mac OS X        ", [(9, finder_info(ftype, creator) + b"\0" * 3728), (2, rsrc)])
    netatalk = apple_container(0x00051607, b"Netatalk        ", [(9, finder_info(ftype, creator)), (8, b"\0" * 16), (0x80444556, b"\0" * 8)])
    write("apple_double", "apple-single", apple_single)
    write("apple_double", "apple-double", plain_double)
    write("apple_double", "macos-dot-underscore", macos_double)
    write("apple_double", "netatalk-metadata", netatalk)
    write("apple_double", "claim-entries", u32(0x00051607) + u32(0x00020000) + b"\0" * 16 + u16(0xFFFF) +
          u32(2) + u32(0) + u32(0xFFFFFFFF))
    for version in (1, 2, 3):
        write("macbinary", "version%d" % version, macbinary(name, ftype, creator, b"data fork", rsrc, version))
    write("macbinary", "claim-fork-lengths", macbinary(name, ftype, creator, b"", b"", 3)[:83] + u32(0xFFFFFFFF) +
          u32(0xFFFFFFFF) + macbinary(name, ftype, creator, b"", b"", 3)[91:])

    # ---- whole files
    create = {
        "dejavu-subset.ttf": dejavu,
        "inconsolata-subset.otf": inconsolata,
        "two-faces.ttc": ttc,
        "mixed-names.ttf": mixed,
        "dfont-small.dfont": small_dfont,
        "otf-dfont-small.dfont": small_otf_dfont,
        "suitcase-small.bin": macbinary(suit_name, suit_type, suit_creator, b"", small_suit, 3),
        "ps-family-small.bin": macbinary(serif_name, serif_type, serif_creator, b"", small_serif, 3),
        "printer-font-small.bin": macbinary(lwfn_name, lwfn_type, lwfn_creator, b"", small_lwfn, 2),
        "suitcase-apple-single": apple_container(0x00051600, b"", [(3, suit_name), (9, finder_info(suit_type, suit_creator)), (2, small_suit)]),
        "suitcase-apple-double": apple_container(0x00051607, b"", [(9, finder_info(suit_type, suit_creator)), (2, small_suit)]),
        "suitcase-macbinary1.bin": macbinary(suit_name, suit_type, suit_creator, b"", small_suit, 1),
        "suitcase-macos-apple-double": apple_container(0x00051607, b"Mac OS X        ", [
            (9, finder_info(suit_type, suit_creator) + b"\0" * 3728), (2, small_suit)]),
        # The printer font's clear text as a file of its own, without the chunk header.
        "printer-font-text.ps": [d for c, i, n, a, d in lwfn if i == 501][0][2:1800],
        "font-dict.pfa": font_dict,
        # A length word at byte 2 that equals the file's length, and "copyright" near the start.
        "length-word.ps": u16(0x8001) + u32(80) + b"Copyright (c) Fuzz Foundry".ljust(74, b" "),
        "claim-table-4gb.ttf": (u32(0x00010000) + u16(2) + u16(0) * 3 + b"glyf" + u32(0) + u32(44) +
                                u32(0xFFFFFFF0) + b"name" + u32(0) + u32(0) + u32(0xFFFFFFFF)).ljust(100, b"\0"),
        "claim-resource-map-4gb.dfont": u32(256) + u32(0xFFFFFF00) + u32(0xFFFFFFFF) + u32(0xFFFFFFFF) + b"\0" * 84,
        "claim-fork-4gb": u32(0x00051600) + u32(0x00020000) + b"\0" * 16 + u16(1) + u32(2) + u32(38) + u32(0xFFFFFFF0) + b"\0" * 62,
    }
    # The first byte picks the name the file is identified under (see
    # whole_file.cpp): .ttf, .otf, .ttc, .dfont, .ps, none, "._" sidecar.
    def selector(file_name):
        for number, ending in enumerate((".ttf", ".otf", ".ttc", ".dfont", ".ps")):
            if file_name.endswith(ending):
                return number
        return 6 if file_name.endswith("apple-double") else 5
    for file_name, data in create.items():
        if isinstance(data, str):
            data = data.encode("latin-1")
        write("whole_file", file_name, bytes([selector(file_name)]) + data)

    # ---- property lists
    faces = [{"FontKind": "OpenType - PS", "PostScriptName": "Fuzz-Bold", "Foundry": "Adobe",
              "Family": "Fuzz", "Version": "1.002", "KerningChecksum": "0000ABCD",
              "Checksum": "DEADBEEF", "OutlineFileSize": "1234", "OutlineFileName": "",
              "Keywords": "", "Path": ""},
             {"FontKind": "TrueType", "PostScriptName": "Fuzz & <Co>", "Checksum": "7FFFFFFF"}]
    write("property_list", "specifiers.plist", plistlib.dumps(faces, fmt=plistlib.FMT_XML))
    write("property_list", "specifiers.bplist", plistlib.dumps(faces, fmt=plistlib.FMT_BINARY))
    write("property_list", "types.bplist", plistlib.dumps({"n": [1, -1, 2 ** 40, 1.5, True, b"\0\1",
                                                                 "\u00e9t\u00e9"], "d": {}}, fmt=plistlib.FMT_BINARY))
    write("property_list", "deep.plist", "<plist>" + "<array>" * 600 + "</array>" * 600 + "</plist>")
    # A binary list whose only array holds itself.
    objects = b"\xa1\x00"
    write("property_list", "cycle.bplist", b"bplist00" + objects + bytes([8]) +
          struct.pack(">6xBBQQQ", 1, 1, 1, 0, 10))

    # ---- the XML form
    def block(kind, name, checksum, size="0", extra=""):
        return ("\t<FontData>\n\t\t<FontKind>%s</FontKind>\n\t\t<PostScriptName>%s</PostScriptName>\n"
                "\t\t<Foundry>Adobe</Foundry>\n\t\t<Family>Fuzz</Family>\n\t\t<Version>1.002</Version>\n"
                "\t\t<Checksum>%s</Checksum>\n\t\t<KerningChecksum>0000ABCD</KerningChecksum>\n"
                "\t\t<OutlineFileSize>%s</OutlineFileSize>\n\t\t<OutlineFileName>%s</OutlineFileName>\n"
                "\t</FontData>\n" % (kind, name, checksum, size, extra))
    header = '<?xml version="1.0" encoding="utf-8" ?>\n<TypeprobeData xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance">\n'
    write("xml", "two-faces.xml", header + block("OpenType - PS", "Fuzz-Bold", "DEADBEEF", "1234") +
          block("TrueType", "Fuzz & <Co>", "7FFFFFFF", "-1", "/Fonts/FuzzBol") + "</TypeprobeData>\n")
    write("xml", "tags-from-later-block.xml", "<FontData><FontKind>PostScript</FontKind></FontData>"
          "<FontData><Family>Later</Family><Checksum>  -80000000</Checksum></FontData>")
    write("xml", "unclosed-block.xml", "<FontData><PostScriptName>Open</PostScriptName>")
    write("xml", "placeholders.xml", block("PLACEHOLDER_FAMILY", "PLACEHOLDER_CHECKSUM", "0x10", "99999999999"))


if __name__ == "__main__":
    main()
