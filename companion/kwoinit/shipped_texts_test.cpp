// The message file that is installed: complete in every language that it has.

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <string>

#include "kwoinit/message_file.h"
#include "kwoinit/recorded_problems.h"

namespace kwo::kwoinit {
namespace {

constexpr std::int32_t kNumbers[] = {1899, 1900, 1901, 1902, 1923, 1924, 1925, 1926, 1927,
                                     1928, 1929, 1930, 1931, 1932, 1933, 1934, 1935};
constexpr std::uint16_t kShippedLanguages[] = {0x0407, 0x040C, 0x0C0A};

std::string Bytes() {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(KWO_MESSAGE_FILE, "rb"), &std::fclose);
    std::string bytes(100'000, '\0');
    bytes.resize(file ? std::fread(bytes.data(), 1, bytes.size(), file.get()) : 0);
    return bytes;
}

/// The texts word for word, so that a section of another language, or a lost letter, shows.
struct Translations {
    std::int32_t number;
    TextView english, german, french, spanish;
};
#define NBSP u"\u00A0"
constexpr Translations kTexts[] = {
    {1899, u"Delete call trace log file for %1?", u"Protokolldatei der Aufrufverfolgung für %1 löschen?",
     u"Supprimer le fichier journal de suivi des appels de %1" NBSP u"?",
     u"¿Eliminar el archivo de registro del seguimiento de llamadas de %1?"},
    {1900, u"An internal application error has occurred.", u"In der Anwendung ist ein interner Fehler aufgetreten.",
     u"Une erreur interne s'est produite dans l'application.", u"Se ha producido un error interno en la aplicación."},
    {1901,
     u"The directory is not the root directory of a drive, as C:\\ is. Give the root directory and try again; the "
     u"support pages of the maker of your system tell more about this error.",
     u"Das Verzeichnis ist nicht das Stammverzeichnis eines Laufwerks, wie zum Beispiel C:\\. Geben Sie das "
     u"Stammverzeichnis an, und versuchen Sie es erneut. Mehr zu diesem Fehler steht auf den Hilfeseiten Ihres "
     u"Systemherstellers.",
     u"Le répertoire n'est pas le répertoire racine d'un lecteur, tel que C:\\. Indiquez le répertoire racine, puis "
     u"réessayez" NBSP u"; les pages d'assistance de l'éditeur de votre système en disent plus sur cette erreur.",
     u"El directorio no es el directorio raíz de una unidad, como C:\\. Indique el directorio raíz y vuelva a "
     u"intentarlo; las páginas de soporte del fabricante de su sistema ofrecen más información sobre este error."},
    {1902, u"Invalid Hex Digit", u"Ungültige Hexadezimalziffer", u"Chiffre hexadécimal non valide",
     u"Dígito hexadecimal no válido"},
    {1923, u"Step: clearing the button", u"Schritt: Schaltfläche leeren", u"Étape" NBSP u": effacement du bouton",
     u"Paso: limpiar el botón"},
    {1924, u"Step: drawing the released button", u"Schritt: losgelassene Schaltfläche zeichnen",
     u"Étape" NBSP u": dessin du bouton relâché", u"Paso: dibujar el botón soltado"},
    {1925, u"Step: noting that the button is shown released",
     u"Schritt: vermerken, dass die Schaltfläche als losgelassen dargestellt wird",
     u"Étape" NBSP u": mémorisation de l'état relâché du bouton", u"Paso: anotar que el botón se muestra soltado"},
    {1926, u"Step: ending the press of the button", u"Schritt: Drücken der Schaltfläche beenden",
     u"Étape" NBSP u": fin de l'appui sur le bouton", u"Paso: terminar la pulsación del botón"},
    {1927, u"Step: finding out whether the pointer is on the button",
     u"Schritt: feststellen, ob der Zeiger auf der Schaltfläche steht",
     u"Étape" NBSP u": vérification de la présence du pointeur sur le bouton",
     u"Paso: comprobar si el puntero está sobre el botón"},
    {1928, u"Step: telling the form about the click", u"Schritt: dem Formular den Klick melden",
     u"Étape" NBSP u": notification du clic au formulaire", u"Paso: notificar el clic al formulario"},
    {1929, u"The relative timer alarm could not be created.",
     u"Der relative Zeitgeberalarm konnte nicht erstellt werden.",
     u"L'alarme relative du minuteur n'a pas pu être créée.", u"No se pudo crear la alarma relativa del temporizador."},
    {1930, u"The program %2 could not be started.\r\nPath: %1",
     u"Das Programm %2 konnte nicht gestartet werden.\r\nPfad: %1",
     u"Le programme %2 n'a pas pu être lancé.\r\nChemin" NBSP u": %1",
     u"No se pudo iniciar el programa %2.\r\nRuta: %1"},
    {1931, u"Press", u"Drücken", u"Appuyer", u"Pulsar"},
    {1932, u"%1, selected", u"%1, ausgewählt", u"%1, sélectionné", u"%1, seleccionado"},
    {1933, u"Selected days: %1", u"Ausgewählte Tage: %1", u"Jours sélectionnés" NBSP u": %1",
     u"Días seleccionados: %1"},
    {1934, u"First month: %1", u"Erster Monat: %1", u"Premier mois" NBSP u": %1", u"Primer mes: %1"},
    {1935, u"Last month: %1", u"Letzter Monat: %1", u"Dernier mois" NBSP u": %1", u"Último mes: %1"},
};
#undef NBSP

/// The bytes as an editor leaves them that saves in the western ANSI code page.
std::string SavedAsAnsi(const std::string& utf8) {
    std::string ansi;
    for (std::size_t at = 0; at < utf8.size(); ++at) {
        const auto first = static_cast<unsigned char>(utf8[at]);
        // All letters of the file are below U+0100.
        ansi += first < 0x80 ? utf8[at] : static_cast<char>((first & 0x03) << 6 | (utf8[++at] & 0x3F));
    }
    return ansi;
}

class ShippedTexts : public testing::Test {
protected:
    TextView Of(std::uint16_t language, std::int32_t number, TextView program = u"KWOUtil") {
        mText = Text(mFile.In(program, language)[number]);
        return mText;
    }
    RecordedProblems mProblems;
    MessageFile mFile{Bytes(), u"KWOInit.nls", mProblems};
    Text mText;
};

TEST_F(ShippedTexts, HaveNoBadLine) {
    EXPECT_EQ(mProblems.lines, std::vector<std::string>{});
}

TEST_F(ShippedTexts, ReachFrom1899To1935) {
    const auto extent = mFile.ExtentOf(u"KWOUtil");

    ASSERT_TRUE(extent);
    EXPECT_EQ(extent->lowest, 1899);
    EXPECT_EQ(extent->highest, 1935);
}

TEST_F(ShippedTexts, AreTheKnownOnesInEveryLanguage) {
    for (const Translations& texts : kTexts) {
        EXPECT_EQ(Of(0x0409, texts.number), texts.english) << texts.number;
        EXPECT_EQ(Of(0x0407, texts.number), texts.german) << texts.number;
        EXPECT_EQ(Of(0x040C, texts.number), texts.french) << texts.number;
        EXPECT_EQ(Of(0x0C0A, texts.number), texts.spanish) << texts.number;
    }
}

// A French user sees no question mark, semicolon or colon at the beginning of a line.
TEST_F(ShippedTexts, HaveNoBreakingBlankBeforeAFrenchMark) {
    for (const std::int32_t number : kNumbers) {
        const TextView text = Of(0x040C, number);
        for (const TextView mark : {u" ?", u" ;", u" :", u" !"})
            EXPECT_EQ(text.find(mark), TextView::npos) << number;
    }
}

TEST_F(ShippedTexts, SavedAsAnsiServeNobodyAnotherLanguage) {
    RecordedProblems problems;
    const MessageFile file(SavedAsAnsi(Bytes()), u"KWOInit.nls", problems);
    EXPECT_GT(problems.lines.size(), 10u);
    for (const Translations& texts : kTexts) {
        const auto served = [&](std::uint16_t language) { return Text(file.In(u"KWOUtil", language)[texts.number]); };
        const Text german = served(0x0407);
        const Text french = served(0x040C);
        const Text spanish = served(0x0C0A);
        EXPECT_TRUE(german == texts.german || german == texts.english) << texts.number;
        EXPECT_TRUE(french == texts.french || french == texts.english) << texts.number;
        EXPECT_TRUE(spanish == texts.spanish || spanish == texts.english) << texts.number;
        EXPECT_EQ(served(0x0409), texts.english) << texts.number;
    }
}

TEST_F(ShippedTexts, AreAllThereAndTranslatedWithTheirPlaceholders) {
    for (const std::int32_t number : kNumbers) {
        const Text english(Of(0x409, number));
        EXPECT_FALSE(english.empty()) << number;
        for (const std::uint16_t language : kShippedLanguages) {
            const TextView text = Of(language, number);
            EXPECT_NE(text, english) << number << ' ' << language;
            for (const TextView part : {u"%1", u"%2", u"%3", u"\r\n"})
                EXPECT_EQ(text.find(part) != TextView::npos, english.find(part) != Text::npos)
                    << number << ' ' << language;
        }
    }
}

TEST_F(ShippedTexts, SpanNoOtherNumbers) {
    for (const std::int32_t number : {1898, 1903, 1910, 1922, 1936})
        EXPECT_EQ(Of(0x409, number), u"") << number;
}

TEST_F(ShippedTexts, ServeTheOtherSublanguages) {
    EXPECT_EQ(Of(0x0807, 1902), u"Ungültige Hexadezimalziffer");
    EXPECT_EQ(Of(0x0C0C, 1902), u"Chiffre hexadécimal non valide");
    EXPECT_EQ(Of(0x040A, 1902), u"Dígito hexadecimal no válido");
}

TEST_F(ShippedTexts, ServeEveryProgram) {
    for (const TextView program : {u"Daxter", u"Daxwin", u"winword"})
        EXPECT_EQ(Of(0x409, 1902, program), u"Invalid Hex Digit");
}

}  // namespace
}  // namespace kwo::kwoinit
