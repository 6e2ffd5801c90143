// SPDX-License-Identifier: MIT
// Catches foreign buttons that act and are not known, in capitals and without accents too, and everyday labels that are
// taken for words of another language.
#include "QuorvellCore/safety/words/ForeignWords.h"

#include <gtest/gtest.h>

namespace quorvell {

TEST(ForeignWords, tellWhatActsFromWhatLooksLikeIt)
{
    for (const char* label :
        {"Jetzt kaufen", "Konto loeschen", "ÜBERWEISUNG", "Alle akzeptieren", "Schließen und absenden", "Commander",
            "DÉSINSTALLER", "Repondre", "S’abonner", "Tout supprimer", "Pagar ahora", "CERRAR SESION", "Acquista ora",
            "Ordina", "Excluir conta", "Nu betalen", "Usuń konto", "Zamawiam z obowiązkiem zapłaty", "Odeslat",
            "Köp nu", "Slet konto", "Kjøp", "Poista tili", "Törlés", "Șterge contul", "SATIN AL", "SİL", "Διαγραφή",
            "ΔΙΑΓΡΑΦΗ", "Купить", "Ｏтправить", "Видалити", "اشتر الآن", "ارسال", "מחק", "अभी खरीदें", "立即购买",
            "確認送出", "購入する", "全て削除", "メッセージを送信", "결제하기", "삭제", "ยืนยัน", "Del …",
            "Cookies löschen", "クッキーを削除", "Înlocuieşte"})
        EXPECT_TRUE(ForeignWords::saysThatItActs(JudgedText(label))) << label;
    for (const char* label :
        {"Weiter", "Zurück", "Abbrechen", "Preis anzeigen", "Gesendet", "Wissen", "Regler", "Die Zahlen", "Döner",
            "Hilfe", "Suivant", "Retour", "Annuler", "Rechercher", "Wing Commander", "Mes achats", "Anterior",
            "Siguiente", "Si", "Mis compras", "Fotos del viaje", "Área pública", "¿Qué es esta página?", "Indietro",
            "Ordina per data", "Volgende", "Wat is dit?", "Boeken", "Dalej", "Zpět", "Nästa", "Tilbage", "Seuraava",
            "Vissza", "Înapoi", "İleri", "Επόμενο", "Далее", "Скасувати", "التالي", "הבא", "आगे", "下一步", "購物車",
            "次の写真", "戻る", "次へ", "취소", "뒤로", "Alle Cookies akzeptieren", "Accepter les cookies",
            "クッキーを許可", "Cookieを許可", "Zezwól na wszystkie pliki cookie", "Settings", "Posters", "Dona Nobis",
            "The Ringmaster", "Kurbel", "ชื่อ", "กลับ"})
        EXPECT_FALSE(ForeignWords::saysThatItActs(JudgedText(label))) << label;
}

TEST(ForeignWords, tellABareYesFromOneThatSaysToWhat)
{
    for (const char* label : {"Ja", "OUI !", "¡Sí!", "Да.", "はい", "हाँ", "→ Weiter"})
        EXPECT_TRUE(ForeignWords::isBareAgreement(label)) << label;
    for (const char* label : {"", "Ja, bitte löschen", "Jahr", "Oui-dire", "いいえ"})
        EXPECT_FALSE(ForeignWords::isBareAgreement(label)) << label;
}

} // namespace quorvell
