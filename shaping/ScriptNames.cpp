// SPDX-License-Identifier: MIT
#include "shaping/ScriptNames.h"

#include <algorithm>
#include <iterator>

namespace orvane
{
namespace
{

struct NamedScript
{
    ScriptTag tag;
    const char* name;
};

/// The scripts of Unicode 15, sorted by their tags.
constexpr NamedScript scripts[] = {
    {MakeScriptTag("Adlm"), "Adlam"},
    {MakeScriptTag("Aghb"), "Caucasian Albanian"},
    {MakeScriptTag("Ahom"), "Ahom"},
    {MakeScriptTag("Arab"), "Arabic"},
    {MakeScriptTag("Armi"), "Imperial Aramaic"},
    {MakeScriptTag("Armn"), "Armenian"},
    {MakeScriptTag("Avst"), "Avestan"},
    {MakeScriptTag("Bali"), "Balinese"},
    {MakeScriptTag("Bamu"), "Bamum"},
    {MakeScriptTag("Bass"), "Bassa Vah"},
    {MakeScriptTag("Batk"), "Batak"},
    {MakeScriptTag("Beng"), "Bengali"},
    {MakeScriptTag("Bhks"), "Bhaiksuki"},
    {MakeScriptTag("Bopo"), "Bopomofo"},
    {MakeScriptTag("Brah"), "Brahmi"},
    {MakeScriptTag("Brai"), "Braille"},
    {MakeScriptTag("Bugi"), "Buginese"},
    {MakeScriptTag("Buhd"), "Buhid"},
    {MakeScriptTag("Cakm"), "Chakma"},
    {MakeScriptTag("Cans"), "Canadian Aboriginal"},
    {MakeScriptTag("Cari"), "Carian"},
    {MakeScriptTag("Cham"), "Cham"},
    {MakeScriptTag("Cher"), "Cherokee"},
    {MakeScriptTag("Chrs"), "Chorasmian"},
    {MakeScriptTag("Copt"), "Coptic"},
    {MakeScriptTag("Cpmn"), "Cypro Minoan"},
    {MakeScriptTag("Cprt"), "Cypriot"},
    {MakeScriptTag("Cyrl"), "Cyrillic"},
    {MakeScriptTag("Deva"), "Devanagari"},
    {MakeScriptTag("Diak"), "Dives Akuru"},
    {MakeScriptTag("Dogr"), "Dogra"},
    {MakeScriptTag("Dsrt"), "Deseret"},
    {MakeScriptTag("Dupl"), "Duployan"},
    {MakeScriptTag("Egyp"), "Egyptian Hieroglyphs"},
    {MakeScriptTag("Elba"), "Elbasan"},
    {MakeScriptTag("Elym"), "Elymaic"},
    {MakeScriptTag("Ethi"), "Ethiopic"},
    {MakeScriptTag("Geor"), "Georgian"},
    {MakeScriptTag("Glag"), "Glagolitic"},
    {MakeScriptTag("Gong"), "Gunjala Gondi"},
    {MakeScriptTag("Gonm"), "Masaram Gondi"},
    {MakeScriptTag("Goth"), "Gothic"},
    {MakeScriptTag("Gran"), "Grantha"},
    {MakeScriptTag("Grek"), "Greek"},
    {MakeScriptTag("Gujr"), "Gujarati"},
    {MakeScriptTag("Guru"), "Gurmukhi"},
    {MakeScriptTag("Hang"), "Hangul"},
    {MakeScriptTag("Hani"), "Han"},
    {MakeScriptTag("Hano"), "Hanunoo"},
    {MakeScriptTag("Hatr"), "Hatran"},
    {MakeScriptTag("Hebr"), "Hebrew"},
    {MakeScriptTag("Hira"), "Hiragana"},
    {MakeScriptTag("Hluw"), "Anatolian Hieroglyphs"},
    {MakeScriptTag("Hmng"), "Pahawh Hmong"},
    {MakeScriptTag("Hmnp"), "Nyiakeng Puachue Hmong"},
    {MakeScriptTag("Hung"), "Old Hungarian"},
    {MakeScriptTag("Ital"), "Old Italic"},
    {MakeScriptTag("Java"), "Javanese"},
    {MakeScriptTag("Kali"), "Kayah Li"},
    {MakeScriptTag("Kana"), "Katakana"},
    {MakeScriptTag("Kawi"), "Kawi"},
    {MakeScriptTag("Khar"), "Kharoshthi"},
    {MakeScriptTag("Khmr"), "Khmer"},
    {MakeScriptTag("Khoj"), "Khojki"},
    {MakeScriptTag("Kits"), "Khitan Small Script"},
    {MakeScriptTag("Knda"), "Kannada"},
    {MakeScriptTag("Kthi"), "Kaithi"},
    {MakeScriptTag("Lana"), "Tai Tham"},
    {MakeScriptTag("Laoo"), "Lao"},
    {MakeScriptTag("Latn"), "Latin"},
    {MakeScriptTag("Lepc"), "Lepcha"},
    {MakeScriptTag("Limb"), "Limbu"},
    {MakeScriptTag("Lina"), "Linear A"},
    {MakeScriptTag("Linb"), "Linear B"},
    {MakeScriptTag("Lisu"), "Lisu"},
    {MakeScriptTag("Lyci"), "Lycian"},
    {MakeScriptTag("Lydi"), "Lydian"},
    {MakeScriptTag("Mahj"), "Mahajani"},
    {MakeScriptTag("Maka"), "Makasar"},
    {MakeScriptTag("Mand"), "Mandaic"},
    {MakeScriptTag("Mani"), "Manichaean"},
    {MakeScriptTag("Marc"), "Marchen"},
    {MakeScriptTag("Medf"), "Medefaidrin"},
    {MakeScriptTag("Mend"), "Mende Kikakui"},
    {MakeScriptTag("Merc"), "Meroitic Cursive"},
    {MakeScriptTag("Mero"), "Meroitic Hieroglyphs"},
    {MakeScriptTag("Mlym"), "Malayalam"},
    {MakeScriptTag("Modi"), "Modi"},
    {MakeScriptTag("Mong"), "Mongolian"},
    {MakeScriptTag("Mroo"), "Mro"},
    {MakeScriptTag("Mtei"), "Meetei Mayek"},
    {MakeScriptTag("Mult"), "Multani"},
    {MakeScriptTag("Mymr"), "Myanmar"},
    {MakeScriptTag("Nagm"), "Nag Mundari"},
    {MakeScriptTag("Nand"), "Nandinagari"},
    {MakeScriptTag("Narb"), "Old North Arabian"},
    {MakeScriptTag("Nbat"), "Nabataean"},
    {MakeScriptTag("Newa"), "Newa"},
    {MakeScriptTag("Nkoo"), "Nko"},
    {MakeScriptTag("Nshu"), "Nushu"},
    {MakeScriptTag("Ogam"), "Ogham"},
    {MakeScriptTag("Olck"), "Ol Chiki"},
    {MakeScriptTag("Orkh"), "Old Turkic"},
    {MakeScriptTag("Orya"), "Oriya"},
    {MakeScriptTag("Osge"), "Osage"},
    {MakeScriptTag("Osma"), "Osmanya"},
    {MakeScriptTag("Ougr"), "Old Uyghur"},
    {MakeScriptTag("Palm"), "Palmyrene"},
    {MakeScriptTag("Pauc"), "Pau Cin Hau"},
    {MakeScriptTag("Perm"), "Old Permic"},
    {MakeScriptTag("Phag"), "Phags Pa"},
    {MakeScriptTag("Phli"), "Inscriptional Pahlavi"},
    {MakeScriptTag("Phlp"), "Psalter Pahlavi"},
    {MakeScriptTag("Phnx"), "Phoenician"},
    {MakeScriptTag("Plrd"), "Miao"},
    {MakeScriptTag("Prti"), "Inscriptional Parthian"},
    {MakeScriptTag("Rjng"), "Rejang"},
    {MakeScriptTag("Rohg"), "Hanifi Rohingya"},
    {MakeScriptTag("Runr"), "Runic"},
    {MakeScriptTag("Samr"), "Samaritan"},
    {MakeScriptTag("Sarb"), "Old South Arabian"},
    {MakeScriptTag("Saur"), "Saurashtra"},
    {MakeScriptTag("Sgnw"), "SignWriting"},
    {MakeScriptTag("Shaw"), "Shavian"},
    {MakeScriptTag("Shrd"), "Sharada"},
    {MakeScriptTag("Sidd"), "Siddham"},
    {MakeScriptTag("Sind"), "Khudawadi"},
    {MakeScriptTag("Sinh"), "Sinhala"},
    {MakeScriptTag("Sogd"), "Sogdian"},
    {MakeScriptTag("Sogo"), "Old Sogdian"},
    {MakeScriptTag("Sora"), "Sora Sompeng"},
    {MakeScriptTag("Soyo"), "Soyombo"},
    {MakeScriptTag("Sund"), "Sundanese"},
    {MakeScriptTag("Sylo"), "Syloti Nagri"},
    {MakeScriptTag("Syrc"), "Syriac"},
    {MakeScriptTag("Tagb"), "Tagbanwa"},
    {MakeScriptTag("Takr"), "Takri"},
    {MakeScriptTag("Tale"), "Tai Le"},
    {MakeScriptTag("Talu"), "New Tai Lue"},
    {MakeScriptTag("Taml"), "Tamil"},
    {MakeScriptTag("Tang"), "Tangut"},
    {MakeScriptTag("Tavt"), "Tai Viet"},
    {MakeScriptTag("Telu"), "Telugu"},
    {MakeScriptTag("Tfng"), "Tifinagh"},
    {MakeScriptTag("Tglg"), "Tagalog"},
    {MakeScriptTag("Thaa"), "Thaana"},
    {MakeScriptTag("Thai"), "Thai"},
    {MakeScriptTag("Tibt"), "Tibetan"},
    {MakeScriptTag("Tirh"), "Tirhuta"},
    {MakeScriptTag("Tnsa"), "Tangsa"},
    {MakeScriptTag("Toto"), "Toto"},
    {MakeScriptTag("Ugar"), "Ugaritic"},
    {MakeScriptTag("Vaii"), "Vai"},
    {MakeScriptTag("Vith"), "Vithkuqi"},
    {MakeScriptTag("Wara"), "Warang Citi"},
    {MakeScriptTag("Wcho"), "Wancho"},
    {MakeScriptTag("Xpeo"), "Old Persian"},
    {MakeScriptTag("Xsux"), "Cuneiform"},
    {MakeScriptTag("Yezi"), "Yezidi"},
    {MakeScriptTag("Yiii"), "Yi"},
    {MakeScriptTag("Zanb"), "Zanabazar Square"},
};

/// Scripts of East Asia, whose fonts are too large for the package of the others.
constexpr ScriptTag eastAsian[] = {MakeScriptTag("Bopo"), MakeScriptTag("Hang"),
                                   MakeScriptTag("Hani"), MakeScriptTag("Hira"),
                                   MakeScriptTag("Kana")};

/// Scripts that no package of fonts in Debian 12 has, as far as is known.
constexpr ScriptTag withoutPackage[] = {
    MakeScriptTag("Chrs"), MakeScriptTag("Cpmn"), MakeScriptTag("Diak"), MakeScriptTag("Kawi"),
    MakeScriptTag("Kits"), MakeScriptTag("Maka"), MakeScriptTag("Nagm"), MakeScriptTag("Nand"),
    MakeScriptTag("Ougr"), MakeScriptTag("Tnsa"), MakeScriptTag("Toto"), MakeScriptTag("Vith")};

const NamedScript* Find(ScriptTag script)
{
    const auto* const found =
        std::lower_bound(std::begin(scripts), std::end(scripts), script,
                         [](const NamedScript& row, ScriptTag tag) { return row.tag < tag; });
    return found != std::end(scripts) && found->tag == script ? found : nullptr;
}

template <std::size_t count>
bool IsAmong(const ScriptTag (&tags)[count], ScriptTag script)
{
    return std::find(std::begin(tags), std::end(tags), script) != std::end(tags);
}

}  // namespace

std::string ScriptLetters(ScriptTag script)
{
    std::string letters;
    for (const unsigned shift : {24U, 16U, 8U, 0U})
    {
        letters += static_cast<char>(script >> shift & 0xFF);
    }
    return letters;
}

std::string ScriptName(ScriptTag script)
{
    const NamedScript* const known = Find(script);
    return known != nullptr ? known->name : "";
}

std::string PackageFor(char32_t character)
{
    const bool isControl = character < 0x20 || (character >= 0x7F && character < 0xA0);
    return isControl ? "" : PackageForScript(ScriptOf(character));
}

std::string PackageForScript(ScriptTag script)
{
    if (script == commonScript)
    {
        return "fonts-symbola";
    }
    if (IsAmong(eastAsian, script))
    {
        return "fonts-noto-cjk";
    }
    return Find(script) != nullptr && !IsAmong(withoutPackage, script) ? "fonts-noto-core" : "";
}

}  // namespace orvane
