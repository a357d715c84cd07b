#!/usr/bin/env python3
"""Source of truth for data/DefaultClassifications.plist.

Run `scripts/make_classifications.py` to rewrite the plist after editing the
lists below. Each block lists family names exactly as fonts carry them (the
naming table's family or typographic family, or a Type 1 /FamilyName); the
generator lower-cases them into keys, because the library looks up the
lower-cased family name and nothing else: no prefix, substring or fuzzy match.
So every spelling a font really uses needs its own line ("TeX Gyre Termes" and
"TeXGyreTermes", "Roboto" and "Roboto Light", ...).

A family must appear under one class only; the generator refuses conflicts.
"""

import argparse
import pathlib
import plistlib
import sys

# Display order of the classification list. "None" is the file's word for no
# classification; the library shows it as "--".
CLASSES = [
    "None",
    "Serif",
    "Old Style Serif",
    "Transitional Serif",
    "Didone Serif",
    "Glyphic Serif",
    "Slab Serif",
    "Sans Serif",
    "Grotesque Sans Serif",
    "Neo-Grotesque Sans Serif",
    "Geometric Sans Serif",
    "Humanist Sans Serif",
    "Script",
    "Blackletter",
    "Decorative",
    "Monospaced",
    "Symbol",
]

# Weight names that static font families put into their legacy family name
# (name ID 1), e.g. "Montserrat Light" beside the typographic family
# "Montserrat". A reader that takes ID 1 sees these.
GOOGLE_WEIGHTS = ["Thin", "ExtraLight", "Light", "Medium", "SemiBold", "ExtraBold", "Black"]
ADOBE_SOURCE_WEIGHTS = ["ExtraLight", "Light", "Semibold", "Black"]
PLEX_WEIGHTS = ["Thin", "ExtraLight", "Light", "Text", "Medium", "SemiBold"]

FAMILIES = {}
WEIGHTED = []  # (class, family, weights)


def families(cls, text):
    FAMILIES.setdefault(cls, []).extend(parse_block(text))


def weighted(cls, weights, text):
    for family in parse_block(text):
        WEIGHTED.append((cls, family, weights))


def parse_block(text):
    names = []
    for line in text.splitlines():
        line = line.split("#", 1)[0].strip()
        if line:
            names.append(line)
    return names


# ---------------------------------------------------------------------------
# Serif: old style (Venetian and Garalde, humanist book faces)
# ---------------------------------------------------------------------------
families("Old Style Serif", """
# Garamond and its kin
Adobe Garamond
Adobe Garamond Pro
AGaramond
Garamond Premier Pro
ITC Garamond
ITC Garamond Std
Garamond
Monotype Garamond
Stempel Garamond
Stempel Garamond LT Std
Garamond 3
Garamond 3 LT Std
Apple Garamond
Simoncini Garamond
Garamond Antiqua
EB Garamond
EB Garamond 08
EB Garamond 12
EB Garamond SC
Cormorant
Cormorant Garamond
Cormorant Infant
Cormorant SC
Cormorant Unicase
Cormorant Upright
Garamond-Math
Granjon
Granjon LT Std
Sabon
Sabon LT Std
Sabon Next
Sabon Next LT
# Aldine and Venetian
Bembo
Bembo Std
Bembo Book MT Pro
Bembo Book MT Std
Poliphilus MT Std
Centaur
High Tower Text
Adobe Jenson
Adobe Jenson Pro
ITC Legacy Serif
ITC Legacy Serif Std
Aldine401 BT
Aldine721 BT
Aldine721 Lt BT
# Goudy, Kennerley, Berkeley
Goudy Old Style
GoudyOlSt BT
Goudy Bookletter 1911
Sorts Mill Goudy
Linden Hill
ITC Berkeley Oldstyle
ITC Berkeley Oldstyle Std
Californian FB
Calisto MT
# Palatino family and its metric twins
Palatino
Palatino Linotype
Palatino LT Std
Palatino Nova
Book Antiqua
URW Palladio L
URW Palladio
P052
TeX Gyre Pagella
TeXGyrePagella
TeX Gyre Pagella Math
Domitian
Aldus
Aldus LT Std
Asana Math
# Bookman and Souvenir (old style antique)
Bookman
ITC Bookman
ITC Bookman Std
Bookman Old Style
URW Bookman
URW Bookman L
TeX Gyre Bonum
TeXGyreBonum
TeX Gyre Bonum Math
ITC Souvenir
ITC Souvenir Std
Souvenir
Souvenir Lt BT
# Caslon and Dutch old style
Caslon
Adobe Caslon
Adobe Caslon Pro
ACaslon
Big Caslon
Caslon 540 LT Std
Williams Caslon Text
Libre Caslon Text
Libre Caslon Display
Janson Text
Janson Text LT Std
Ehrhardt
Ehrhardt MT Std
Van Dijck MT Std
Plantin
Plantin Std
Dante
Dante MT Std
# Twentieth-century and contemporary old style
Minion
Minion Pro
Minion Std
Minion Variable Concept
Arno Pro
Warnock Pro
Brioso Pro
Trump Mediaeval
Trump Mediaeval LT Std
ITC Galliard
ITC Galliard Std
Galliard
Hoefler Text
Iowan Old Style
Athelas
Cochin
Cochin LT Std
Stempel Schneidler
Stempel Schneidler Std
Bernhard Modern
Bernhard Modern Std
BernhardMod BT
Century Old Style
Century Old Style Std
ITC Cheltenham
ITC Cheltenham Std
Cheltenham
ITC Weidemann
ITC Weidemann Std
ITC Mendoza Roman
ITC Mendoza Roman Std
Footlight MT Light
Gloucester MT Extra Condensed
ITC Clearface
ITC Clearface Std
Lyon Text
FF Scala
# Libre and open-source old style
Alegreya
Alegreya SC
Vollkorn
Vollkorn SC
Crimson
Crimson Text
Crimson Pro
Cochineal
Cardo
Gentium
Gentium Plus
Gentium Basic
Gentium Book Basic
Gentium Book Plus
Linux Libertine
Linux Libertine O
Linux Libertine G
Linux Libertine Display O
Libertinus Serif
Libertinus Serif Display
Libertinus Math
Junicode
Fraunces
IM Fell English
IM Fell English SC
IM Fell DW Pica
IM Fell DW Pica SC
IM Fell Double Pica
IM Fell Double Pica SC
IM Fell French Canon
IM Fell French Canon SC
IM Fell Great Primer
IM Fell Great Primer SC
Fanwood Text
Quattrocento
""")


# ---------------------------------------------------------------------------
# Serif: transitional (Baskerville, Times, Scotch romans, modern text faces)
# ---------------------------------------------------------------------------
families("Transitional Serif", """
# Times and its clones
Times
Times New Roman
Times New Roman PS
Times New Roman PS Pro
Times LT Std
Times Ten
Times Ten LT Std
CG Times
Nimbus Roman
Nimbus Roman No9 L
TeX Gyre Termes
TeXGyreTermes
TeX Gyre Termes Math
Liberation Serif
Tinos
Thorndale AMT
FreeSerif
Dutch801 Rm BT
Dutch801 XBd BT
STIXGeneral
STIXVariants
STIXNonUnicode
STIX Two Text
STIX Two Math
XITS
XITS Math
Doulos SIL
# Baskerville
Baskerville
Baskerville Old Face
Baskerville BT
ITC New Baskerville
ITC New Baskerville Std
New Baskerville
Libre Baskerville
Baskervville
Mrs Eaves
Mrs Eaves OT
# Other transitional and Scotch romans
Bell MT
Bulmer
Fournier
Perpetua
Perpetua Std
Joanna
Joanna MT Std
Joanna Nova
Electra
Electra LT Std
Caledonia
New Caledonia
New Caledonia LT Std
Miller Text
Miller Display
ITC Stone Serif
ITC Stone Serif Std
Stone Serif
Lucida Bright
Georgia
Georgia Pro
Gelasio
Cambria
Cambria Math
Caladea
Constantia
Charter
Bitstream Charter
ITC Charter
ITC Charter Std
Charis SIL
XCharter
Utopia
Utopia Std
Erewhon
Heuristica
Adobe Text Pro
Tiempos Text
Tiempos Headline
New York
New York Small
New York Medium
New York Large
New York Extra Large
# Century
Century
Century Schoolbook
Century Schoolbook L
New Century Schoolbook
New Century Schlbk
CentSchbook BT
C059
TeX Gyre Schola
TeXGyreSchola
TeX Gyre Schola Math
Century Expanded
Century Expanded LT Std
ITC Century
ITC Century Std
# Contemporary and libre
Source Serif Pro
Source Serif 4
Source Serif 4 Display
Source Serif Variable
PT Serif
PT Serif Caption
Noto Serif
Noto Serif Display
Droid Serif
DejaVu Serif
DejaVu Serif Condensed
DejaVu Math TeX Gyre
TeX Gyre DejaVu Math
MS Serif
LucidaBright
Bitstream Vera Serif
Playfair
Playfair Display
Playfair Display SC
DM Serif Display
DM Serif Text
""")


# ---------------------------------------------------------------------------
# Serif: Didone / modern (Bodoni, Didot, Walbaum, Computer Modern, fat faces)
# ---------------------------------------------------------------------------
families("Didone Serif", """
Bodoni
Bodoni 72
Bodoni 72 Oldstyle
Bodoni 72 Smallcaps
Bodoni MT
Bodoni MT Black
Bodoni MT Condensed
Bodoni MT Poster Compressed
Bauer Bodoni
Bauer Bodoni Std
Bodoni Std
Bodoni Bk BT
Bodoni Bd BT
Bodoni Moda
Libre Bodoni
Didot
Didot LT Std
Linotype Didot
HTF Didot
GFS Didot
Theano Didot
Walbaum
Walbaum Text
Walbaum Display
Modern No. 20
ITC Fenice
ITC Fenice Std
Fenice
Torino
Normande
Centennial
Centennial LT Std
Kepler Std
Elephant
Bernard MT Condensed
Onyx
Old Standard TT
Old Standard
Prata
Gilda Display
Abril Fatface
Yeseva One
Rozha One
Vidaloka
# Computer Modern and Latin Modern
Computer Modern
CMU Serif
CMU Classical Serif
CMU Serif Upright Italic
Latin Modern Roman
Latin Modern Roman Caps
Latin Modern Roman Demi
Latin Modern Roman Dunhill
Latin Modern Roman Slanted
Latin Modern Roman Unslanted
Latin Modern Math
LM Roman 5
LM Roman 6
LM Roman 7
LM Roman 8
LM Roman 9
LM Roman 10
LM Roman 12
LM Roman 17
LM Roman Caps 10
LM Roman Demi 10
LM Roman Dunhill 10
LM Roman Slanted 8
LM Roman Slanted 9
LM Roman Slanted 10
LM Roman Slanted 12
LM Roman Slanted 17
LM Roman Unslanted 10
LMRoman10
LMRoman12
""")


# ---------------------------------------------------------------------------
# Serif: glyphic (incised, chiselled and engraved capitals)
# ---------------------------------------------------------------------------
families("Glyphic Serif", """
Trajan
Trajan Pro
Trajan Pro 3
Charlemagne Std
ITC Friz Quadrata
ITC Friz Quadrata Std
Friz Quadrata
Friz Quadrata TT
Albertus
Albertus MT
Albertus MT Lt
Albertus Medium
Albertus Extra Bold
Albertus Nova
Copperplate
Copperplate Gothic
Copperplate Gothic Bold
Copperplate Gothic Light
Copperplate Gothic Std
CopprplGoth BT
CopprplGoth Bd BT
CopprplGoth Hv BT
ITC Serif Gothic
ITC Serif Gothic Std
Castellar
Felix Titling
Perpetua Titling MT
Engravers MT
Amerigo BT
Cinzel
Marcellus
Marcellus SC
Forum
""")


# ---------------------------------------------------------------------------
# Slab serif (Egyptians, Clarendons, typewriter-inspired proportional slabs)
# ---------------------------------------------------------------------------
families("Slab Serif", """
Rockwell
Rockwell Condensed
Rockwell Extra Bold
Rockwell Std
Rockwell Nova
Clarendon
Clarendon LT Std
Clarendon BT
Clarendon Condensed
Superclarendon
Egyptienne F
Serifa
Serifa BT
Serifa Std
ITC Lubalin Graph
ITC Lubalin Graph Std
Lubalin Graph
Memphis
Memphis LT Std
GeoSlab703 Lt BT
GeoSlab703 Md BT
GeoSlab703 XBd BT
Stymie
Glypha
Glypha LT Std
Aachen
ITC American Typewriter
ITC American Typewriter Std
American Typewriter
Lucida Fax
ITC Officina Serif
ITC Officina Serif Std
Chaparral Pro
Archer
Sentinel
Caecilia
PMN Caecilia
Caecilia LT Std
Adelle
FF Tisa
Vitesse
TheSerif
Calvert
Museo
Museo Slab
CMU Concrete
# Libre and open-source slabs
Roboto Slab
Zilla Slab
Zilla Slab Highlight
Arvo
Bitter
Josefin Slab
Crete Round
Kreon
Rokkitt
Slabo 13px
Slabo 27px
Alfa Slab One
Patua One
Ultra
Arbutus Slab
Podkova
Aleo
Noticia Text
Enriqueta
Copse
Coustard
Sanchez
Glegoo
Trocchi
Antic Slab
Bree Serif
Solway
Holtwood One SC
Bevan
Graduate
Pridi
""")


# ---------------------------------------------------------------------------
# Serif, no finer class: Mincho, Song, Ming and Myeongjo faces, serif text
# faces for other scripts, and Latin serifs that mix traditions.
# ---------------------------------------------------------------------------
families("Serif", """
# Latin serifs of mixed lineage
Sitka Small
Sitka Text
Sitka Subheading
Sitka Heading
Sitka Display
Sitka Banner
Lora
Merriweather
Spectral
Domine
Literata
Newsreader
Neuton
Roboto Serif
Frank Ruhl Libre
Rasa
Yrsa
Martel
Alike
Alike Angular
Andada
Andada Pro
Lusitana
Ovo
Judson
Radley
Cambo
Petrona
Unna
Lustria
Esteban
Average
Faustina
Della Respira
Halant
Kurale
Mate
Brawler
Headland One
Hanuman
Roman
Sylfaen
Aptos Serif
Luxi Serif
Plantagenet Cherokee
Abyssinica SIL
# Hebrew serifs
David
David Libre
FrankRuehl
New Peninim MT
Adobe Hebrew
# Arabic Naskh text faces
Amiri
Scheherazade
Scheherazade New
Noto Naskh Arabic
Noto Naskh Arabic UI
Traditional Arabic
Simplified Arabic
Arabic Typesetting
Sakkal Majalla
Adobe Arabic
Adobe Naskh
Droid Arabic Naskh
# Thai and Indic serifs
Angsana New
AngsanaUPC
Taviraj
Trirong
Kinnari
Norasi
Laksaman
Rachana
# Japanese Mincho
MS Mincho
MS PMincho
Yu Mincho
YuMincho
Hiragino Mincho Pro
Hiragino Mincho ProN
Kozuka Mincho Pro
Kozuka Mincho Pr6N
Kozuka Mincho Std
IPAMincho
IPAPMincho
IPAexMincho
TakaoMincho
TakaoPMincho
TakaoExMincho
HGMinchoB
HGMinchoE
BIZ UDMincho
BIZ UDPMincho
Sawarabi Mincho
Shippori Mincho
Shippori Mincho B1
Zen Old Mincho
Zen Antique
Hina Mincho
Kaisei Tokumin
Kaisei Opti
New Tegomin
Kiwi Maru
Toppan Bunkyu Mincho
Toppan Bunkyu Midashi Mincho
HanaMinA
HanaMinB
# Chinese Song and Ming
SimSun
NSimSun
SimSun-ExtB
SimSun-ExtG
FangSong
FangSong_GB2312
STSong
STFangsong
STZhongsong
Songti SC
Songti TC
PMingLiU
MingLiU
MingLiU_HKSCS
MingLiU-ExtB
PMingLiU-ExtB
MingLiU_HKSCS-ExtB
Apple LiSung
LiSong Pro
Adobe Song Std
Adobe Ming Std
Adobe Fangsong Std
AR PL UMing CN
AR PL UMing TW
AR PL UMing HK
AR PL UMing TW MBE
AR PL New Sung
AR PL SungtiL GB
AR PL Mingti2L Big5
AR PL ShanHeiSun Uni
ZCOOL XiaoWei
# Korean Myeongjo and Batang
Batang
BatangChe
AppleMyungjo
Adobe Myungjo Std
UnBatang
Baekmuk Batang
NanumMyeongjo
Nanum Myeongjo
Gowun Batang
# Source Han Serif and Noto Serif CJK
Source Han Serif
Source Han Serif JP
Source Han Serif KR
Source Han Serif SC
Source Han Serif TC
Source Han Serif HC
Source Han Serif CN
Source Han Serif TW
Source Han Serif HK
Source Han Serif K
Noto Serif CJK JP
Noto Serif CJK KR
Noto Serif CJK SC
Noto Serif CJK TC
Noto Serif CJK HK
Noto Serif JP
Noto Serif KR
Noto Serif SC
Noto Serif TC
Noto Serif HK
""")


# ---------------------------------------------------------------------------
# Sans serif: grotesque (nineteenth-century and early grotesques and gothics)
# ---------------------------------------------------------------------------
families("Grotesque Sans Serif", """
Franklin Gothic
Franklin Gothic Book
Franklin Gothic Demi
Franklin Gothic Demi Cond
Franklin Gothic Heavy
Franklin Gothic Medium
Franklin Gothic Medium Cond
ITC Franklin Gothic
ITC Franklin Gothic Std
FrnkGothITC Bk BT
FrnkGothITC Md BT
FrnkGothITC Hv BT
Libre Franklin
News Gothic
News Gothic MT
News Gothic Std
Trade Gothic
Trade Gothic LT Std
Trade Gothic Next
Akzidenz-Grotesk
Akzidenz-Grotesk BQ
Akzidenz-Grotesk Pro
Akzidenz-Grotesk Std
Monotype Grotesque
Grotesque MT
URW Grotesk
Alternate Gothic
League Gothic
Bell Gothic Std
Bell Centennial
Aurora Cn BT
Benton Sans
Knockout
Tungsten
Haettenschweiler
Impact
Oswald
Anton
Pathway Gothic One
Work Sans
Karla
Archivo
Archivo Narrow
Archivo Black
Chivo
Space Grotesk
Schibsted Grotesk
Hanken Grotesk
Darker Grotesque
Bricolage Grotesque
Atkinson Hyperlegible
Barlow
Barlow Condensed
Barlow Semi Condensed
IBM Plex Sans
IBM Plex Sans Condensed
Graphik
GT America
Founders Grotesk
Atlas Grotesk
Latin Modern Sans
Latin Modern Sans Demi Cond
Latin Modern Sans Quotation
LM Sans 8
LM Sans 9
LM Sans 10
LM Sans 12
LM Sans 17
LM Sans Demi Cond 10
LM Sans Quot 8
LMSans10
CMU Sans Serif
CMU Sans Serif Demi Condensed
""")


# ---------------------------------------------------------------------------
# Sans serif: neo-grotesque (Helvetica, Univers, Arial and their descendants,
# the DIN family)
# ---------------------------------------------------------------------------
families("Neo-Grotesque Sans Serif", """
# Helvetica and its clones
Helvetica
Helvetica Neue
Helvetica LT Std
Helvetica Neue LT Std
Helvetica Neue LT Pro
Helvetica Narrow
N Helvetica Narrow
Helvetica Condensed
Helvetica Light
Helvetica Rounded
Helvetica World
Helvetica Now Display
Helvetica Now Text
Helvetica Now Micro
Neue Haas Grotesk Display
Neue Haas Grotesk Text
Neue Haas Unica
Nimbus Sans
Nimbus Sans L
Nimbus Sans Narrow
TeX Gyre Heros
TeX Gyre Heros Cn
TeXGyreHeros
TeXGyreHerosCn
FreeSans
Swis721 BT
Swis721 Lt BT
Swis721 Th BT
Swis721 Md BT
Swis721 Hv BT
Swis721 Blk BT
Swis721 Cn BT
Swis721 LtCn BT
Swis721 BlkCn BT
Swis721 Ex BT
Swis721 LtEx BT
Swis721 BlkEx BT
Swiss911 XCm BT
Swiss911 UCm BT
Pragmatica
# Arial and its metric twins
Arial
Arial MT
Arial Black
Arial Narrow
Arial Nova
Arial Nova Cond
Arial Rounded MT Bold
Arial Unicode MS
Arial Hebrew
Arial Hebrew Scholar
Liberation Sans
Liberation Sans Narrow
Arimo
# Univers and other Swiss neo-grotesques
Univers
Univers LT Std
Univers Next Pro
Univers Condensed
Vectora LT Std
Folio
Aktiv Grotesk
Akkurat
Suisse Int'l
Acumin Pro
Aptos
Aptos Display
Aptos Narrow
Bierstadt
Microsoft Sans Serif
MS Sans Serif
Geneva
# Contemporary neo-grotesques
Roboto
Roboto Condensed
Roboto Flex
Heebo
Inter
Inter Display
Inter Tight
Public Sans
SF Pro
SF Pro Display
SF Pro Text
SF Pro Rounded
SF Compact
SF Compact Display
SF Compact Text
SF Compact Rounded
# DIN
DIN
DIN Alternate
DIN Condensed
DIN Next LT Pro
FF DIN
URW DIN
D-DIN
D-DIN Condensed
D-DIN Exp
Grandview
Bahnschrift
Bahnschrift Light
Bahnschrift SemiLight
Bahnschrift SemiBold
Bahnschrift Condensed
Bahnschrift SemiCondensed
Bahnschrift Light Condensed
Bahnschrift Light SemiCondensed
Bahnschrift SemiLight Condensed
Bahnschrift SemiLight SemiConde
Bahnschrift SemiBold Condensed
Bahnschrift SemiBold SemiConden
""")


# ---------------------------------------------------------------------------
# Sans serif: geometric (Futura, Avant Garde and circle-based designs)
# ---------------------------------------------------------------------------
families("Geometric Sans Serif", """
Futura
Futura Std
Futura PT
Futura Now Text
Futura Now Headline
Futura Bk BT
Futura Md BT
Futura Lt BT
Futura Hv BT
Futura XBlk BT
Futura BdCn BT
Avenir
Avenir LT Std
Avenir Next
Avenir Next LT Pro
Avenir Next Condensed
Century Gothic
ITC Avant Garde Gothic
ITC Avant Garde Gothic Std
ITC Avant Garde Gothic Pro
Avant Garde
URW Gothic
URW Gothic L
TeX Gyre Adventor
TeXGyreAdventor
Kabel
ITC Kabel
ITC Kabel Std
URW Geometric
Geometr415 Lt BT
Geometr415 Md BT
Geometr415 Blk BT
Geometr231 BT
Geometr231 Lt BT
Geometr231 Hv BT
Geometr212 BkCn BT
Tw Cen MT
Tw Cen MT Condensed
Tw Cen MT Condensed Extra Bold
Berlin Sans FB
Berlin Sans FB Demi
Eurostile
Eurostile LT Std
Microgramma
Square721 BT
BankGothic Lt BT
BankGothic Md BT
Bank Gothic
Gotham
Gotham Narrow
Gotham Rounded
Proxima Nova
Brandon Grotesque
Museo Sans
Museo Sans Rounded
Neutraface Text
Neutraface Display
Harmonia Sans
Sofia Pro
Gilroy
Circular Std
GT Walsheim
Verlag
FF Mark
Product Sans
Google Sans
Google Sans Text
Google Sans Display
# Libre geometric sans
Montserrat
Montserrat Alternates
Poppins
Raleway
Josefin Sans
Quicksand
Comfortaa
Questrial
Didact Gothic
League Spartan
Spartan
Lexend
Outfit
Sora
Urbanist
Jost
Kumbh Sans
Plus Jakarta Sans
Figtree
DM Sans
Varela
Varela Round
Exo
Exo 2
Michroma
Syncopate
Metropolis
Albert Sans
""")


# ---------------------------------------------------------------------------
# Sans serif: humanist (Gill, Frutiger, Optima and calligraphy-based sans)
# ---------------------------------------------------------------------------
families("Humanist Sans Serif", """
Gill Sans
Gill Sans MT
Gill Sans MT Condensed
Gill Sans MT Ext Condensed Bold
Gill Sans Ultra Bold
Gill Sans Ultra Bold Condensed
Gill Sans Std
Gill Sans Nova
Frutiger
Frutiger LT Std
Humanst521 BT
Humanst521 Lt BT
Humanst521 XBd BT
Humanst521 Cn BT
Myriad
Myriad Pro
Myriad Arabic
Myriad Hebrew
Optima
Optima LT Std
Optima nova
ZapfHumnst BT
ZapfHumnst Dm BT
URW Classico
CG Omega
Syntax
Syntax LT Std
FF Meta
FF Kievit
ITC Officina Sans
ITC Officina Sans Std
ITC Stone Sans
ITC Stone Sans Std
Stone Sans
ITC Goudy Sans
ITC Goudy Sans Std
ITC Legacy Sans
ITC Legacy Sans Std
ITC Eras
ITC Eras Std
Eras Light ITC
Eras Medium ITC
Eras Demi ITC
Eras Bold ITC
Antique Olive
Incised901 BT
Incised901 Lt BT
Incised901 Bd BT
Rotis Sans Serif
Whitney
TheSans
Lucida
Quattrocento Sans
Tenor Sans
Freight Sans Pro
Adelle Sans
Cronos Pro
Skia
Seravek
Adobe Clean
Lucida Sans
Lucida Sans Unicode
Lucida Grande
Verdana
Verdana Pro
Tahoma
Trebuchet MS
MS Reference Sans Serif
Segoe UI
Segoe UI Light
Segoe UI Semilight
Segoe UI Semibold
Segoe UI Black
Segoe UI Variable
Segoe UI Variable Display
Segoe UI Variable Text
Segoe UI Variable Small
Selawik
Calibri
Calibri Light
Carlito
Candara
Candara Light
Corbel
Corbel Light
Maiandra GD
Espy Sans
Go
Go Medium
Go Smallcaps
Luxi Sans
# Open-source humanist sans
DejaVu Sans
DejaVu Sans Condensed
DejaVu Sans Light
Bitstream Vera Sans
Open Sans
Open Sans Condensed
Noto Sans
Noto Sans Display
Noto Sans UI
Droid Sans
Fira Sans
Fira Sans Condensed
Fira Sans Extra Condensed
Fira Sans OT
Fira Math
Source Sans Pro
Source Sans 3
Source Sans Variable
Assistant
Ubuntu
Ubuntu Condensed
Ubuntu Light
Ubuntu Medium
Ubuntu Sans
Cantarell
Cantarell Light
Cantarell Thin
Cantarell Extra Bold
Oxygen
Lato
PT Sans
PT Sans Caption
PT Sans Narrow
Istok Web
Linux Biolinum
Linux Biolinum O
Linux Biolinum G
Libertinus Sans
Andika
Cabin
Cabin Condensed
Alegreya Sans
Alegreya Sans SC
Merriweather Sans
Hind
Hind Siliguri
Hind Madurai
Hind Vadodara
Hind Guntur
Mukta
Mukta Vaani
Mukta Mahee
Mukta Malar
Signika
Signika Negative
Asap
Asap Condensed
Titillium
Titillium Web
B612
""")


# ---------------------------------------------------------------------------
# Sans serif, no finer class: Gothic, Hei and Dotum faces, sans for other
# scripts, and Latin sans that mix traditions.
# ---------------------------------------------------------------------------
families("Sans Serif", """
# Latin sans of mixed lineage
Rubik
Nunito
Nunito Sans
Mulish
Muli
Manrope
Dosis
Maven Pro
Encode Sans
Encode Sans Condensed
Encode Sans Expanded
Catamaran
Fjalla One
Bebas Neue
Yanone Kaffeesatz
Overpass
Red Hat Display
Red Hat Text
Interstate
Neo Sans
Neo Tech
Saira
Saira Condensed
Saira Semi Condensed
Saira Extra Condensed
Rajdhani
Teko
Khand
Electrolize
Share Tech
Jura
Krona One
Carrois Gothic
Carrois Gothic SC
Paytone One
Agency FB
Dubai
SF Arabic
SF Hebrew
SF Armenian
SF Georgian
Tuffy
Abel
Francois One
Philosopher
Play
Ropa Sans
Secular One
Yantramanav
Sofia Sans
Readex Pro
Cuprum
Palanquin
Economica
Antic
Scada
Arsenal
Small Fonts
System
Modern
Chicago
Charcoal
Segoe UI Historic
Droid Sans Arabic
Droid Sans Hebrew
Droid Sans Thai
Droid Sans Armenian
Droid Sans Georgian
Droid Sans Ethiopic
Droid Arabic Kufi
Noto Looped Thai
Noto Looped Thai UI
Noto Looped Lao
Noto Looped Lao UI
IBM Plex Sans Arabic
IBM Plex Sans Devanagari
IBM Plex Sans Hebrew
IBM Plex Sans Thai
IBM Plex Sans Thai Looped
IBM Plex Sans JP
IBM Plex Sans KR
# Multi-script UI and system sans
Ebrima
Gadugi
Nirmala UI
Leelawadee
Leelawadee UI
Myanmar Text
Mangal
Latha
Gautami
Tunga
Raavi
Shruti
Vrinda
Kartika
Kalinga
Iskoola Pota
Euphemia
Euphemia UCAS
Microsoft New Tai Lue
Microsoft PhagsPa
Microsoft Tai Le
Khmer UI
Lao UI
# Hebrew and Arabic sans
Miriam
Gisha
Aharoni
Levenim MT
Geeza Pro
KufiStandardGK
Noto Kufi Arabic
Cairo
Tajawal
Almarai
Changa
El Messiri
Reem Kufi
Mada
Vazirmatn
Vazir
# Thai sans
Browallia New
BrowalliaUPC
Cordia New
CordiaUPC
Thonburi
Sukhumvit Set
Garuda
Loma
Sawasdee
Umpush
Waree
Kanit
Prompt
Mitr
Sarabun
Athiti
Bai Jamjuree
Chakra Petch
K2D
Krub
KoHo
Niramit
Kodchasan
Thasadith
# Indic sans
Kohinoor Devanagari
Kohinoor Bangla
Kohinoor Telugu
Kohinoor Gujarati
ITF Devanagari
ITF Devanagari Marathi
Devanagari Sangam MN
Bangla Sangam MN
Gujarati Sangam MN
Gurmukhi Sangam MN
Kannada Sangam MN
Malayalam Sangam MN
Oriya Sangam MN
Sinhala Sangam MN
Tamil Sangam MN
Telugu Sangam MN
Myanmar Sangam MN
Lao Sangam MN
Khmer Sangam MN
Lohit Assamese
Lohit Bengali
Lohit Devanagari
Lohit Gujarati
Lohit Gurmukhi
Lohit Kannada
Lohit Malayalam
Lohit Marathi
Lohit Nepali
Lohit Odia
Lohit Oriya
Lohit Punjabi
Lohit Tamil
Lohit Tamil Classical
Lohit Telugu
Meera
Manjari
Gayathri
Padauk
# Japanese Gothic
MS Gothic
MS PGothic
MS UI Gothic
Meiryo
Meiryo UI
Yu Gothic
Yu Gothic UI
YuGothic
Hiragino Sans
Hiragino Kaku Gothic Pro
Hiragino Kaku Gothic ProN
Hiragino Kaku Gothic Std
Hiragino Kaku Gothic StdN
Hiragino Maru Gothic Pro
Hiragino Maru Gothic ProN
Hiragino Sans GB
Hiragino Sans CNS
Osaka
Kozuka Gothic Pro
Kozuka Gothic Pr6N
Kozuka Gothic Std
IPAGothic
IPAPGothic
IPAexGothic
IPAUIGothic
TakaoGothic
TakaoPGothic
TakaoExGothic
VL Gothic
VL PGothic
HGGothicE
HGGothicM
HGMaruGothicMPRO
HGSoeiKakugothicUB
BIZ UDGothic
BIZ UDPGothic
Sawarabi Gothic
M PLUS 1p
M PLUS Rounded 1c
M PLUS 1
M PLUS 2
M+ 1p
M+ 2p
M+ 1c
M+ 2c
Kosugi
Kosugi Maru
Zen Maru Gothic
Zen Kaku Gothic New
Zen Kaku Gothic Antique
Murecho
Toppan Bunkyu Gothic
Toppan Bunkyu Midashi Gothic
Tsukushi A Round Gothic
Tsukushi B Round Gothic
Droid Sans Japanese
# Chinese Hei
SimHei
Microsoft YaHei
Microsoft YaHei UI
Microsoft YaHei Light
Microsoft JhengHei
Microsoft JhengHei UI
Microsoft JhengHei Light
DengXian
DengXian Light
YouYuan
STHeiti
STXihei
Heiti SC
Heiti TC
PingFang SC
PingFang TC
PingFang HK
PingFang MO
Lantinghei SC
Lantinghei TC
Apple LiGothic
LiHei Pro
Adobe Heiti Std
Adobe Fan Heiti Std
WenQuanYi Zen Hei
WenQuanYi Zen Hei Sharp
WenQuanYi Micro Hei
Droid Sans Fallback
HarmonyOS Sans
HarmonyOS Sans SC
HarmonyOS Sans TC
MiSans
Alibaba PuHuiTi
Sarasa Gothic SC
Sarasa Gothic TC
Sarasa Gothic HC
Sarasa Gothic J
Sarasa Gothic K
Sarasa UI SC
Sarasa UI TC
Sarasa UI J
Sarasa UI K
# Korean Gothic, Dotum and Gulim
Malgun Gothic
Gulim
GulimChe
Dotum
DotumChe
Apple SD Gothic Neo
AppleGothic
Adobe Gothic Std
UnDotum
UnGraphic
Baekmuk Gulim
Baekmuk Dotum
Baekmuk Headline
NanumGothic
Nanum Gothic
NanumBarunGothic
NanumSquare
NanumSquareRound
Gothic A1
Gowun Dodum
Pretendard
Spoqa Han Sans
# Source Han Sans and Noto Sans CJK
Source Han Sans
Source Han Sans JP
Source Han Sans KR
Source Han Sans SC
Source Han Sans TC
Source Han Sans HC
Source Han Sans CN
Source Han Sans TW
Source Han Sans HK
Source Han Sans K
Noto Sans CJK JP
Noto Sans CJK KR
Noto Sans CJK SC
Noto Sans CJK TC
Noto Sans CJK HK
Noto Sans JP
Noto Sans KR
Noto Sans SC
Noto Sans TC
Noto Sans HK
""")


# ---------------------------------------------------------------------------
# Script: formal and casual scripts, calligraphic and handwriting faces,
# Kai and brush faces of East Asia, Nastaliq and Thuluth
# ---------------------------------------------------------------------------
families("Script", """
# Chancery italics
ITC Zapf Chancery
ITC Zapf Chancery Std
Zapf Chancery
URW Chancery L
Z003
TeX Gyre Chorus
TeXGyreChorus
Apple Chancery
Monotype Corsiva
Lucida Calligraphy
# Formal scripts
Zapfino
Snell Roundhand
Edwardian Script ITC
Kunstler Script
Shelley Allegro Script
Shelley Andante Script
Shelley Volante Script
Bickham Script Pro
Bickham Script Pro 3
Caflisch Script Pro
Poetica Std
Sanvito Pro
Ex Ponto Pro
Pepita Std
Palace Script MT
French Script MT
Script MT Bold
Vivaldi
Vladimir Script
Savoye LET
Coronet
Marigold
ParkAvenue BT
English157 BT
Embassy BT
Cataneo BT
Lucia BT
Kaufmann BT
Staccato222 BT
Freehand575 BT
Freehand591 BT
TypoUpright BT
# Brush and casual scripts
Brush Script
Brush Script MT
Brush Script Std
Mistral
Freestyle Script
Rage Italic
Forte
Magneto
Harlow Solid Italic
Gigi
Pristina
Blackadder ITC
Informal Roman
Juice ITC
Parchment
Matura MT Script Capitals
Gabriola
Segoe Script
Giddyup Std
Tekton Pro
SignPainter
Sand
# Handwriting
Lucida Handwriting
Segoe Print
Ink Free
MV Boli
Kristen ITC
Viner Hand ITC
Bradley Hand
Bradley Hand ITC
Comic Sans MS
Comic Neue
Chalkboard
Chalkboard SE
Chalkduster
Marker Felt
Noteworthy
Party LET
Script
Purisa
Chilanka
# Libre scripts and handwriting
Dancing Script
Pacifico
Lobster
Lobster Two
Caveat
Caveat Brush
Satisfy
Great Vibes
Sacramento
Indie Flower
Shadows Into Light
Shadows Into Light Two
Amatic SC
Permanent Marker
Kaushan Script
Courgette
Cookie
Gloria Hallelujah
Patrick Hand
Patrick Hand SC
Architects Daughter
Rock Salt
Homemade Apple
Allura
Alex Brush
Parisienne
Tangerine
Pinyon Script
Yellowtail
Handlee
Kalam
Marck Script
Nothing You Could Do
Reenie Beanie
Covered By Your Grace
Just Another Hand
Damion
Mr Dafoe
Mr De Haviland
Mrs Saint Delafield
Herr Von Muellerhoff
Monsieur La Doulaise
Italianno
Petit Formal Script
Norican
Niconne
Playball
Rochester
Leckerli One
Bad Script
Neucha
Schoolbell
Sue Ellen Francisco
Zeyada
Waiting for the Sunrise
La Belle Aurore
Dawning of a New Day
Cedarville Cursive
Meddon
Over the Rainbow
Give You Glory
Coming Soon
Crafty Girls
Walter Turncoat
Calligraffitti
Arizonia
Berkshire Swash
Clicker Script
Euphoria Script
Grand Hotel
Kristi
Merienda
Merienda One
Mr Bedfort
Montez
Qwigley
Ruthie
Rouge Script
Seaweed Script
Stalemate
Yesteryear
Oleo Script
Sofia
Style Script
Gochi Hand
Short Stack
Annie Use Your Telescope
Loved by the King
Just Me Again Down Here
Swanky and Moo Moo
Delius
Delius Swash Caps
Delius Unicase
Itim
Mali
Sriracha
Charm
Charmonman
Nanum Pen Script
Nanum Brush Script
# Kai and brush faces (Chinese, Japanese, Korean)
KaiTi
KaiTi_GB2312
STKaiti
STXingkai
STLiti
STXinwei
Kaiti SC
Kaiti TC
BiauKai
DFKai-SB
Adobe Kaiti Std
AR PL UKai CN
AR PL UKai TW
AR PL UKai HK
AR PL UKai TW MBE
AR PL New Kai
AR PL ZenKai Uni
AR PL KaitiM GB
AR PL KaitiM Big5
Xingkai SC
Libian SC
Weibei SC
Wawati SC
Hannotate SC
HanziPen SC
Baoli SC
LXGW WenKai
Ma Shan Zheng
Zhi Mang Xing
Liu Jian Mao Cao
Long Cang
Klee
Klee One
Yusei Magic
Yomogi
Yuji Syuku
HGGyoshotai
HGSeikaishotaiPRO
Gungsuh
GungsuhChe
UnGungseo
UnPilgi
# Nastaliq, Thuluth and other calligraphic Arabic
Noto Nastaliq Urdu
Urdu Typesetting
Awami Nastaliq
Diwan Thuluth
Aref Ruqaa
Corsiva Hebrew
""")


# ---------------------------------------------------------------------------
# Blackletter: textura, rotunda, schwabacher and fraktur
# ---------------------------------------------------------------------------
families("Blackletter", """
Old English Text MT
Old London
Goudy Text
Cloister Black
Blackletter686 BT
Linotext
Lucida Blackletter
Fette Fraktur
Fette Fraktur LT Std
Fraktur
Breitkopf Fraktur
Luthersche Fraktur
Walbaum Fraktur
Wittenberger Fraktur
Zentenar Fraktur
Unger Fraktur
Alte Schwabacher
Schwabacher
Wilhelm Klingspor Gotisch
Wilhelm Klingspor Gotisch LT Std
Duc De Berry
Duc De Berry LT Std
San Marco
San Marco LT Std
Rotunda
Clairvaux
Clairvaux LT Std
London
UnifrakturMaguntia
UnifrakturCook
Pirata One
Grenze Gotisch
Germania One
Texturina
Fruktur
""")


# ---------------------------------------------------------------------------
# Decorative and display: ornamented, shaded, stencil, novelty and poster faces
# ---------------------------------------------------------------------------
families("Decorative", """
# Office and Windows display faces
Algerian
Bauhaus 93
Broadway
Chiller
Colonna MT
Cooper Black
Curlz MT
Goudy Stout
Harrington
Imprint MT Shadow
Jokerman
Niagara Engraved
Niagara Solid
Playbill
Poor Richard
Ravie
Showcard Gothic
Snap ITC
Stencil
Wide Latin
Britannic Bold
Tempus Sans ITC
# macOS display faces
Papyrus
Herculanum
Phosphate
Luminari
Trattatello
Academy Engraved LET
Techno
Textile
Gadget
Capitals
# Classic display faces
ITC Bauhaus
ITC Benguiat
ITC Benguiat Std
Benguiat Bk BT
ITC Korinna
ITC Korinna Std
ITC Tiffany
ITC Tiffany Std
ITC Machine
ITC Machine Std
Peignot
Exotc350 Bd BT
Exotc350 Lt BT
Arnold Boecklin
Hobo
Hobo Std
Hobo BT
Cooper Std
Stencil Std
Stencil BT
Umbra BT
Bremen Bd BT
Windsor BT
OzHandicraft BT
GoudyHandtooled BT
Lithos Pro
Mesquite Std
Rosewood Std
Ponderosa Std
Birch Std
Blackoak Std
Cottonwood Std
Juniper Std
Ironwood Std
Mojo Std
Madrone Std
Zebrawood Std
Critter Std
Viva Std
Eccentric Std
# Libre display faces
Cinzel Decorative
Bangers
Luckiest Guy
Fredoka
Fredoka One
Righteous
Bungee
Bungee Shade
Bungee Inline
Bungee Outline
Bungee Hairline
Black Ops One
Press Start 2P
Silkscreen
Monoton
Audiowide
Orbitron
Russo One
Sigmar One
Chewy
Special Elite
Creepster
Fascinate
Fascinate Inline
Faster One
Frijole
Lilita One
Titan One
Carter One
Concert One
Staatliches
Bowlby One
Bowlby One SC
Shrikhand
Rye
Ewert
Vast Shadow
Poller One
Cherry Cream Soda
Fontdiner Swanky
Kranky
Mountains of Christmas
Henny Penny
Eater
Nosifer
Butcherman
Metal Mania
New Rocker
Rubik Mono One
Monofett
Wallpoet
Zen Dots
Bigshot One
Chango
Gravitas One
Limelight
Poiret One
Megrim
Codystar
Plaster
Sniglet
Baloo 2
Love Ya Like A Sister
Londrina Solid
Londrina Outline
Emblema One
Erica One
Diplomata
Diplomata SC
Griffy
Freckle Face
Irish Grover
Jolly Lodger
Modak
Racing Sans One
Ranchers
Sancreek
Smokum
Spicy Rice
Trade Winds
Bubblegum Sans
Boogaloo
Gorditas
Shojumaru
Skranji
Federant
Fugaz One
Geostar
Geostar Fill
Iceberg
Iceland
Oxanium
Acme
Passion One
Unkempt
Cherry Swash
Metamorphous
Lalezar
Rakkas
Chonburi
Pattaya
Srisakdi
Dela Gothic One
Reggae One
RocknRoll One
Rampart One
Hachi Maru Pop
Mochiy Pop One
DotGothic16
Stick
Kaisei Decol
ZCOOL QingKe HuangYou
ZCOOL KuaiLe
STCaiyun
STHupo
""")


# ---------------------------------------------------------------------------
# Monospaced: typewriter, terminal and programming faces, whatever their
# serif style (a user picks these for their fixed pitch)
# ---------------------------------------------------------------------------
families("Monospaced", """
# Courier and its clones
Courier
Courier New
Courier Std
Courier 10 Pitch
Courier Prime
Nimbus Mono
Nimbus Mono L
Nimbus Mono PS
TeX Gyre Cursor
TeXGyreCursor
Liberation Mono
Cousine
FreeMono
# Typewriter and office monospace
Letter Gothic
Letter Gothic Std
Orator Std
Prestige Elite Std
OCR A Extended
OCR A Std
OCR-A BT
OCR-B 10 BT
Monospace821 BT
Lucida Console
Lucida Sans Typewriter
Andale Mono
Monaco
Menlo
SF Mono
Consolas
Cascadia Code
Cascadia Mono
Cascadia Code PL
Cascadia Mono PL
Aptos Mono
Fixedsys
Terminal
Fixed
LucidaTypewriter
Miriam Fixed
Simplified Arabic Fixed
Rod
# Open-source monospace
DejaVu Sans Mono
Bitstream Vera Sans Mono
Droid Sans Mono
Droid Sans Mono Dotted
Droid Sans Mono Slashed
Noto Mono
Noto Sans Mono
Ubuntu Mono
Ubuntu Sans Mono
Source Code Pro
Source Code Variable
Fira Mono
Fira Code
Hack
Inconsolata
Inconsolata LGC
Inconsolata-g
Anonymous
Anonymous Pro
Roboto Mono
IBM Plex Mono
JetBrains Mono
JetBrains Mono NL
Space Mono
DM Mono
Red Hat Mono
Overpass Mono
Oxygen Mono
PT Mono
Cutive Mono
Share Tech Mono
Major Mono Display
Nanum Gothic Coding
NanumGothicCoding
Syne Mono
Xanh Mono
Azeret Mono
Martian Mono
Spline Sans Mono
Fragment Mono
Chivo Mono
B612 Mono
VT323
Nova Mono
Go Mono
Iosevka
Iosevka Term
Victor Mono
mononoki
Hermit
Meslo LG S
Meslo LG M
Meslo LG L
Meslo LG S DZ
Meslo LG M DZ
Meslo LG L DZ
Terminus
xos4 Terminus
Monoid
Office Code Pro
Input Mono
Operator Mono
PragmataPro
Fantasque Sans Mono
Comic Mono
Monofur
Envy Code R
Luxi Mono
Everson Mono
Unifont
Unifont Upper
Unifont CSUR
Google Sans Mono
Latin Modern Mono
Latin Modern Mono Caps
Latin Modern Mono Light
Latin Modern Mono Light Cond
Latin Modern Mono Prop
Latin Modern Mono Prop Light
Latin Modern Mono Slanted
LM Mono 8
LM Mono 9
LM Mono 10
LM Mono 12
LM Mono Caps 10
LM Mono Light 10
LM Mono Light Cond 10
LM Mono Prop 10
LM Mono Prop Light 10
LM Mono Slanted 10
LMMono10
CMU Typewriter Text
# Thai, CJK and other monospace
Tlwg Mono
Tlwg Typewriter
Tlwg Typist
Tlwg Typo
M+ 1m
M+ 1mn
M+ 2m
WenQuanYi Zen Hei Mono
WenQuanYi Micro Hei Mono
Sarasa Mono SC
Sarasa Mono TC
Sarasa Mono HC
Sarasa Mono J
Sarasa Mono K
Sarasa Term SC
Sarasa Term TC
Sarasa Term J
Sarasa Term K
Source Han Mono
Source Han Code JP
Noto Sans Mono CJK JP
Noto Sans Mono CJK KR
Noto Sans Mono CJK SC
Noto Sans Mono CJK TC
Noto Sans Mono CJK HK
""")


# ---------------------------------------------------------------------------
# Symbol: symbol sets, dingbats, ornaments, icons, emoji and music
# ---------------------------------------------------------------------------
families("Symbol", """
Symbol
Standard Symbols PS
Standard Symbols L
Zapf Dingbats
ITC Zapf Dingbats
Dingbats
D050000L
Wingdings
Wingdings 2
Wingdings 3
Webdings
Marlett
MT Extra
MS Reference Specialty
MS Outlook
Bookshelf Symbol 7
Monotype Sorts
Segoe UI Symbol
Segoe UI Emoji
Segoe MDL2 Assets
Segoe Fluent Icons
HoloLens MDL2 Assets
Apple Symbols
Apple Color Emoji
Apple Braille
LastResort
Bodoni Ornaments
STIXSizeOneSym
STIXSizeTwoSym
STIXSizeThreeSym
STIXSizeFourSym
STIXSizeFiveSym
STIXIntegralsD
STIXIntegralsSm
STIXIntegralsUp
STIXIntegralsUpD
STIXIntegralsUpSm
OpenSymbol
Symbola
Noto Color Emoji
Noto Emoji
Noto Sans Symbols
Noto Sans Symbols 2
Noto Music
Noto Znamenny Musical Notation
Twemoji
Twemoji Mozilla
Twitter Color Emoji
EmojiOne
EmojiOne Color
JoyPixels
Bravura
Bravura Text
FontAwesome
Font Awesome 5 Free
Font Awesome 5 Brands
Font Awesome 6 Free
Font Awesome 6 Brands
Material Icons
Material Icons Outlined
Material Icons Round
Material Icons Sharp
Material Icons Two Tone
Material Symbols Outlined
Material Symbols Rounded
Material Symbols Sharp
Material Design Icons
Glyphicons Halflings
Ionicons
PowerlineSymbols
Symbols Nerd Font
Symbols Nerd Font Mono
""")


# ---------------------------------------------------------------------------
# Noto: "Noto Sans <script>" is the sans and "Noto Serif <script>" the serif
# design for that script. The Latin, CJK, mono, symbol and calligraphic
# families are listed above under their own classes.
# ---------------------------------------------------------------------------
NOTO_SANS_SCRIPTS = """
Adlam
Adlam Unjoined
Anatolian Hieroglyphs
Arabic
Arabic UI
Armenian
Avestan
Balinese
Bamum
Bassa Vah
Batak
Bengali
Bengali UI
Bhaiksuki
Brahmi
Buginese
Buhid
Canadian Aboriginal
Carian
Caucasian Albanian
Chakma
Cham
Cherokee
Chorasmian
Coptic
Cuneiform
Cypriot
Cypro Minoan
Deseret
Devanagari
Devanagari UI
Duployan
Egyptian Hieroglyphs
Elbasan
Elymaic
Ethiopic
Georgian
Glagolitic
Gothic
Grantha
Gujarati
Gujarati UI
Gunjala Gondi
Gurmukhi
Gurmukhi UI
Hanifi Rohingya
Hanunoo
Hatran
Hebrew
Imperial Aramaic
Indic Siyaq Numbers
Inscriptional Pahlavi
Inscriptional Parthian
Javanese
Kaithi
Kannada
Kannada UI
Kawi
Kayah Li
Kharoshthi
Khmer
Khmer UI
Khojki
Khudawadi
Lao
Lao UI
Lao Looped
Lepcha
Limbu
Linear A
Linear B
Lisu
Lycian
Lydian
Mahajani
Malayalam
Malayalam UI
Mandaic
Manichaean
Marchen
Masaram Gondi
Math
Mayan Numerals
Medefaidrin
Meetei Mayek
Mende Kikakui
Meroitic
Miao
Modi
Mongolian
Mro
Multani
Myanmar
Myanmar UI
NKo
NKo Unjoined
Nabataean
Nag Mundari
Nandinagari
New Tai Lue
Newa
Nushu
Ogham
Ol Chiki
Old Hungarian
Old Italic
Old North Arabian
Old Permic
Old Persian
Old Sogdian
Old South Arabian
Old Turkic
Oriya
Oriya UI
Osage
Osmanya
Pahawh Hmong
Palmyrene
Pau Cin Hau
Phags Pa
Phoenician
Psalter Pahlavi
Rejang
Runic
Samaritan
Saurashtra
Sharada
Shavian
Siddham
SignWriting
Sinhala
Sinhala UI
Sogdian
Sora Sompeng
Soyombo
Sundanese
Syloti Nagri
Syriac
Syriac Eastern
Syriac Western
Tagalog
Tagbanwa
Tai Le
Tai Tham
Tai Viet
Takri
Tamil
Tamil UI
Tamil Supplement
Tangsa
Telugu
Telugu UI
Thaana
Thai
Thai UI
Thai Looped
Tifinagh
Tirhuta
Ugaritic
Vai
Vithkuqi
Wancho
Warang Citi
Yi
Zanabazar Square
"""

NOTO_SERIF_SCRIPTS = """
Ahom
Armenian
Balinese
Bengali
Devanagari
Dives Akuru
Dogra
Ethiopic
Georgian
Grantha
Gujarati
Gurmukhi
Hebrew
Kannada
Khitan Small Script
Khmer
Khojki
Lao
Makasar
Malayalam
Myanmar
NP Hmong
Old Uyghur
Oriya
Ottoman Siyaq
Sinhala
Tamil
Tamil Slanted
Tangut
Telugu
Thai
Tibetan
Toto
Vithkuqi
Yezidi
"""

families("Sans Serif", "\n".join("Noto Sans " + s for s in parse_block(NOTO_SANS_SCRIPTS)))
families("Serif", "\n".join("Noto Serif " + s for s in parse_block(NOTO_SERIF_SCRIPTS)))
families("Serif", """
Noto Rashi Hebrew
""")
families("Script", """
Noto Traditional Nushu
""")


# ---------------------------------------------------------------------------
# Legacy family names (name ID 1) of static families that carry the weight in
# the family name. Listed by the weights each family really ships.
# ---------------------------------------------------------------------------
weighted("Neo-Grotesque Sans Serif", ["Thin", "Light", "Medium", "Black"], """
Roboto
""")
weighted("Neo-Grotesque Sans Serif", ["Light", "Medium"], """
Roboto Condensed
""")
weighted("Humanist Sans Serif", ["Light", "Medium", "Semibold", "ExtraBold"], """
Open Sans
""")
weighted("Humanist Sans Serif", ["Hairline", "Thin", "Light", "Medium", "Semibold", "Heavy", "Black"], """
Lato
""")
weighted("Humanist Sans Serif", ADOBE_SOURCE_WEIGHTS, """
Source Sans Pro
""")
weighted("Monospaced", ["ExtraLight", "Light", "Medium", "Semibold", "Black"], """
Source Code Pro
""")
weighted("Transitional Serif", ADOBE_SOURCE_WEIGHTS, """
Source Serif Pro
""")
weighted("Grotesque Sans Serif", PLEX_WEIGHTS, """
IBM Plex Sans
IBM Plex Sans Condensed
""")
weighted("Transitional Serif", PLEX_WEIGHTS, """
IBM Plex Serif
""")
weighted("Monospaced", PLEX_WEIGHTS, """
IBM Plex Mono
""")
weighted("Monospaced", ["Light", "Medium", "SemiBold", "Retina"], """
Fira Code
""")
weighted("Monospaced", ["Medium"], """
Fira Mono
""")
weighted("Humanist Sans Serif", GOOGLE_WEIGHTS + ["Book", "Heavy"], """
Fira Sans
""")
weighted("Humanist Sans Serif", GOOGLE_WEIGHTS, """
Fira Sans Condensed
Fira Sans Extra Condensed
Noto Sans
""")
weighted("Transitional Serif", GOOGLE_WEIGHTS, """
Noto Serif
""")
weighted("Monospaced", ["Thin", "ExtraLight", "Light", "Medium", "SemiBold", "ExtraBold"], """
Noto Sans Mono
""")
weighted("Geometric Sans Serif", GOOGLE_WEIGHTS, """
Montserrat
Poppins
Raleway
Exo 2
""")
weighted("Grotesque Sans Serif", GOOGLE_WEIGHTS, """
Work Sans
Barlow
Barlow Condensed
Barlow Semi Condensed
""")
weighted("Sans Serif", GOOGLE_WEIGHTS, """
Kanit
Prompt
""")
weighted("Sans Serif", ["ExtraLight", "Light", "SemiBold", "ExtraBold", "Black"], """
Nunito
Nunito Sans
""")
weighted("Neo-Grotesque Sans Serif", ["Light"], """
Arial Nova
Arial Nova Cond
""")
weighted("Neo-Grotesque Sans Serif", ["Light", "SemiBold", "ExtraBold", "Black"], """
Aptos
""")

# Noto Sans CJK and Noto Serif CJK weights beyond Regular and Bold carry the
# weight in the legacy family name ("Noto Sans CJK JP Light").
for region in ["JP", "KR", "SC", "TC", "HK"]:
    for weight in ["Thin", "Light", "DemiLight", "Medium", "Black"]:
        FAMILIES["Sans Serif"].append(f"Noto Sans CJK {region} {weight}")
    for weight in ["ExtraLight", "Light", "Medium", "SemiBold", "Black"]:
        FAMILIES["Serif"].append(f"Noto Serif CJK {region} {weight}")
for region in ["", " JP", " KR", " SC", " TC", " HC", " K"]:
    for weight in ["ExtraLight", "Light", "Normal", "Medium", "Heavy"]:
        FAMILIES["Sans Serif"].append(f"Source Han Sans{region} {weight}")
    for weight in ["ExtraLight", "Light", "Medium", "SemiBold", "Heavy"]:
        FAMILIES["Serif"].append(f"Source Han Serif{region} {weight}")


# ---------------------------------------------------------------------------
# Localised family names. A font without an English family record, or a
# caller that passes the localised name as the alternate family, meets these.
# ---------------------------------------------------------------------------
families("Serif", """
宋体
新宋体
仿宋
新細明體
細明體
바탕
바탕체
""")
families("Sans Serif", """
黑体
微软雅黑
微軟正黑體
等线
幼圆
맑은 고딕
굴림
굴림체
돋움
돋움체
メイリオ
""")
families("Script", """
楷体
標楷體
궁서
궁서체
""")


# ---------------------------------------------------------------------------
# Generator
# ---------------------------------------------------------------------------
def build_mappings():
    """Returns {lower-case family: class}; raises on a family filed twice under
    different classes or under a class missing from CLASSES."""
    entries = []
    for cls, names in FAMILIES.items():
        entries.extend((name, cls) for name in names)
    for cls, family, weights in WEIGHTED:
        entries.append((family, cls))
        entries.extend((f"{family} {weight}", cls) for weight in weights)

    mappings = {}
    problems = []
    for name, cls in entries:
        if cls not in CLASSES or cls == "None":
            problems.append(f"{name!r}: unknown class {cls!r}")
            continue
        if name != name.strip() or "  " in name:
            problems.append(f"{name!r}: stray blanks")
        key = name.lower()
        if mappings.get(key, cls) != cls:
            problems.append(f"{name!r}: filed under {mappings[key]!r} and {cls!r}")
        mappings[key] = cls
    if problems:
        raise SystemExit("\n".join(problems))
    return mappings


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    default_out = pathlib.Path(__file__).resolve().parent.parent / "data" / "DefaultClassifications.plist"
    parser.add_argument("-o", "--output", type=pathlib.Path, default=default_out)
    args = parser.parse_args()

    mappings = build_mappings()
    table = {"Default Classifications": CLASSES, "Mappings": mappings}
    args.output.parent.mkdir(parents=True, exist_ok=True)
    with open(args.output, "wb") as out:
        plistlib.dump(table, out, fmt=plistlib.FMT_XML, sort_keys=True)

    counts = {cls: 0 for cls in CLASSES}
    for cls in mappings.values():
        counts[cls] += 1
    print(f"{args.output}: {len(CLASSES)} classes, {len(mappings)} mappings")
    for cls in CLASSES[1:]:
        print(f"  {counts[cls]:5d}  {cls}")


if __name__ == "__main__":
    sys.exit(main())
