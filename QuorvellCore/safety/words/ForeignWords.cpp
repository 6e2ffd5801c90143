// SPDX-License-Identifier: MIT
// One row for each language, as its shops, mail programs and dialogs write it. What is inflected stands in each form.
#include "QuorvellCore/safety/words/ForeignWords.h"

#include "QuorvellCore/safety/words/LanguageMatcher.h"
#include "QuorvellCore/safety/words/OneOf.h"
#include "QuorvellCore/text/CodePoints.h"
#include "QuorvellCore/text/LowerCase.h"

#include <unicode/uchar.h>

#include <array>

namespace quorvell {

namespace {

using Text = std::string_view;

/// Whole words.
constexpr auto spaced = std::to_array<Language>({
    {"de",
        "kaufen,jetzt kaufen,kaufe,sofortkauf,bestellen,bestelle,bestellung aufgeben,kostenpflichtig,"
        "zahlungspflichtig,bezahlen,jetzt zahlen,zur kasse,überweisen,überweisung,ueberweisen,geld senden,spenden,"
        "buchen,reservieren,bieten,ersteigern,mieten,aufladen,einzahlen,auszahlen,löschen,loeschen,lösche,entfernen,"
        "papierkorb leeren,alles wissen,verlauf leeren,zurücksetzen,zuruecksetzen,formatieren,überschreiben,ersetzen,"
        "verwerfen,nicht speichern,senden,sende,absenden,abschicken,verschicken,versenden,schicken,antworten,"
        "weiterleiten,veröffentlichen,veroeffentlichen,teilen,posten,kommentieren,freigeben,hochladen,herunterladen,"
        "installieren,deinstallieren,abmelden,ausloggen,anmelden,einloggen,registrieren,konto erstellen,abonnieren,"
        "mitglied werden,kündigen,kuendigen,anrufen,beitreten,blockieren,melden,unterschreiben,beenden,neu starten,"
        "neustart,herunterfahren,konto schließen,ausführen,jetzt aktualisieren,papierkorb,verlassen,authentifizieren,"
        "legitimieren,identifizieren,entf",
        "annehmen,akzeptieren,akzeptiere,zustimmen,stimme zu,einverstanden,bestätigen,bestaetigen,zulassen,erlauben,"
        "genehmigen,gestatten"},
    {"fr",
        "acheter,achetez,achète,payer,payez,procéder au paiement,passer commande,passer la commande,"
        "valider la commande,commander maintenant,commandez,régler la commande,virement,virer,envoyer de l'argent,"
        "faire un don,réserver,réservez,enchérir,louer,supprimer,supprimez,supprime,effacer,retirer,"
        "vider la corbeille,vider,réinitialiser,formater,écraser,remplacer,ne pas enregistrer,envoyer,envoyez,envoie,"
        "répondre,transférer,publier,publiez,partager,partagez,commenter,soumettre,téléverser,télécharger,installer,"
        "désinstaller,mettre à niveau,déconnexion,se déconnecter,déconnecter,se connecter,s'inscrire,s’inscrire,"
        "je m'inscris,créer un compte,s'abonner,s’abonner,abonner,souscrire,se désabonner,résilier,appeler,appelez,"
        "rejoindre,bloquer,signaler,signer,quitter,redémarrer,éteindre,mettre en vente,exécuter,corbeille,enlever,"
        "abandonner,authentifier,s'identifier,s’identifier,suppr,mettre à jour maintenant",
        "accepter,acceptez,j'accepte,j’accepte,confirmer,confirmez,valider,validez,autoriser,autorisez,approuver"},
    {"es",
        "comprar,compra ahora,cómpralo,finalizar compra,finalizar la compra,tramitar pedido,realizar pedido,"
        "realizar el pedido,hacer pedido,hacer el pedido,pedir ahora,pagar,ir al pago,transferir,transferencia,"
        "enviar dinero,donar,reservar,pujar,apostar,invertir,vender,contratar,alquilar,eliminar,elimina,borrar,"
        "suprimir,quitar,vaciar,restablecer,formatear,sobrescribir,reemplazar,no guardar,descartar,enviar,envía,"
        "mandar,responder,reenviar,publicar,postear,compartir,comentar,subir archivo,descargar,instalar,desinstalar,"
        "cerrar sesión,salir,iniciar sesión,registrarse,registrarme,regístrate,crear cuenta,suscribirse,suscribirme,"
        "suscríbete,darse de baja,darme de baja,llamar,unirse,unirme,únete,bloquear,denunciar,reportar,firmar,"
        "reiniciar,apagar,ejecutar,cancelar suscripción,papelera,sustituir,autenticar,supr,borra,actualizar ahora,"
        "recargar saldo",
        "aceptar,acepto,de acuerdo,confirmar,confirmo,permitir,autorizar,conceder,aprobar"},
    {"it",
        "acquista,acquistare,compra ora,compra adesso,comprare,compralo subito,paga,pagare,vai al pagamento,"
        "procedi al pagamento,procedi all'acquisto,procedi all’acquisto,ordina ora,effettua ordine,effettua l'ordine,"
        "invia ordine,concludi ordine,trasferisci,bonifico,invia denaro,fai una donazione,donare,prenota,prenotare,"
        "offri,vendi,noleggia,elimina,eliminare,cancella,cancellare,rimuovi,rimuovere,svuota,ripristina,formatta,"
        "sovrascrivi,sostituisci,non salvare,invia,inviare,spedisci,rispondi,inoltra,pubblicare,condividi,"
        "condividere,commenta,carica file,scarica,installa,installare,disinstalla,aggiorna ora,esci,disconnetti,"
        "disconnettersi,accedi,registrati,iscriviti,crea account,abbonati,disiscriviti,disdici,chiama,chiamare,"
        "partecipa,unisciti,blocca,segnala,firmare,riavvia,spegni,esegui,cestino,scarta,autentica,azzera,canc",
        "accetta,accetto,accettare,acconsento,acconsenti,conferma,confermare,consenti,permetti,autorizza,approva,"
        "permettere"},
    {"pt",
        "comprar,compre agora,compre já,finalizar compra,finalizar pedido,fazer pedido,fechar pedido,concluir compra,"
        "encomendar,pagar,ir para o pagamento,transferir,transferência,enviar dinheiro,fazer pix,doar,reservar,"
        "apostar,investir,vender,alugar,excluir,exclua,apagar,eliminar,remover,deletar,esvaziar,redefinir,formatar,"
        "substituir,não guardar,não salvar,descartar,enviar,envie,responder,encaminhar,reencaminhar,publicar,postar,"
        "partilhar,compartilhar,comentar,enviar arquivo,baixar,descarregar,instalar,desinstalar,atualizar agora,"
        "terminar sessão,encerrar sessão,iniciar sessão,sair,fazer login,inscrever-se,inscreva-se,cadastrar,"
        "cadastre-se,criar conta,registar,registrar,subscrever,assinar,assine,cancelar assinatura,fazer chamada,"
        "telefonar,participar,bloquear,denunciar,reiniciar,desligar,executar,lixo,lixeira,autenticar,submeter,"
        "recarregar saldo,exclui,deslogar",
        "aceitar,aceito,aceite,concordo,concordar,confirmar,confirmo,permitir,autorizar,aprovar"},
    {"nl",
        "kopen,koop nu,direct kopen,bestellen,bestel nu,bestelling plaatsen,betalen,betaal,afrekenen,overmaken,"
        "overboeken,geld sturen,doneren,doneer,nu boeken,boek nu,reserveren,reserveer,bieden,bied nu,huren,"
        "opwaarderen,verwijder,alles wissen,gegevens wissen,geschiedenis wissen,prullenbak legen,formatteren,"
        "overschrijven,vervangen,niet opslaan,verzenden,verzend,versturen,verstuur,sturen,stuur,beantwoorden,"
        "antwoorden,doorsturen,publiceren,publiceer,bericht plaatsen,uploaden,downloaden,installeren,installeer,"
        "verwijderen,bijwerken,uitloggen,afmelden,inloggen,aanmelden,registreren,inschrijven,account aanmaken,"
        "abonneren,abonneer,lid worden,opzeggen,bellen,deelnemen,blokkeren,rapporteren,ondertekenen,afsluiten,"
        "opnieuw opstarten,uitschakelen,uitvoeren,prullenbak,verwerpen,authenticeren,indienen",
        "accepteren,accepteer,akkoord,instemmen,bevestigen,bevestig,toestaan,sta toe,goedkeuren"},
    {"pl",
        "kup,kup teraz,kupuję,kupić,zapłać,płacę,płać,zapłacić,do kasy,zamów,zamawiam,złóż zamówienie,"
        "obowiązkiem zapłaty,przelej,przelew,wyślij pieniądze,wpłać,wypłać,doładuj,przekaż,wesprzyj,rezerwuj,"
        "zarezerwuj,licytuj,sprzedaj,wynajmij,usuń,usunąć,skasuj,kasuj,opróżnij,opróżnij kosz,wyczyść,zresetuj,"
        "sformatuj,nadpisz,zastąp,nie zapisuj,wyślij,wysłać,prześlij,odpowiedz,przekaż dalej,opublikuj,publikuj,"
        "udostępnij,skomentuj,pobierz,zainstaluj,instaluj,odinstaluj,zaktualizuj,wyloguj,zaloguj,zarejestruj,"
        "załóż konto,utwórz konto,subskrybuj,zasubskrybuj,wypisz się,zrezygnuj,zadzwoń,dołącz,zablokuj,zgłoś,podpisz,"
        "zakończ,uruchom ponownie,uruchom,do kosza,odrzuć,uwierzytelnij,przywróć ustawienia,wykonaj",
        "akceptuj,akceptuję,zaakceptuj,zgadzam się,zgoda,wyrażam zgodę,potwierdź,potwierdzam,zezwól,zezwalaj,pozwól,"
        "zatwierdź"},
    {"cs",
        "koupit,kup teď,objednat,objednávám,závazně objednat,povinností platby,zaplatit,platit,k pokladně,převést,"
        "převod,poslat peníze,darovat,přispět,rezervovat,přihodit,prodat,dobít,smazat,odstranit,vymazat,vysypat koš,"
        "resetovat,formátovat,přepsat,nahradit,neukládat,odeslat,poslat,odpovědět,přeposlat,zveřejnit,publikovat,"
        "sdílet,okomentovat,nahrát,stáhnout,nainstalovat,instalovat,odinstalovat,odhlásit,přihlásit,"
        "registrovat,zaregistrovat,vytvořit účet,odebírat,předplatit,zrušit předplatné,zavolat,volat,připojit se,"
        "zablokovat,nahlásit,podepsat,ukončit,restartovat,vypnout,spustit,do koše,zahodit,autentizovat",
        "přijmout,přijímám,souhlasím,souhlasit,potvrdit,potvrzuji,povolit,schválit"},
    {"sv",
        "köp nu,köpa,köp,betala,beställ,beställa,slutför köp,till kassan,överför,överföra,skicka pengar,swisha,skänk,"
        "donera,boka,reservera,lägg bud,hyr,sälj,ta bort,radera,töm papperskorgen,återställ,formatera,skriv över,"
        "ersätt,spara inte,skicka,svara,vidarebefordra,publicera,dela,kommentera,ladda ner,ladda upp,installera,"
        "avinstallera,uppdatera nu,logga ut,logga in,registrera,skapa konto,prenumerera,bli medlem,avsluta,säg upp,"
        "ring upp,gå med,blockera,anmäl,rapportera,signera,starta om,stäng av,papperskorg,papperskorgen,förkasta,"
        "autentisera,kör,skicka in",
        "acceptera,godkänn,godkänna,godta,samtycker,bekräfta,tillåt,tillåta"},
    {"da",
        "køb nu,køb,betal,bestil,gennemfør køb,til kassen,overfør,send penge,donér nu,støt nu,reserver,byd nu,sælg,"
        "slet,fjern,tøm papirkurv,tøm papirkurven,nulstil,formater,overskriv,erstat,gem ikke,videresend,udgiv,"
        "offentliggør,afinstaller,opdater nu,log ud,log ind,tilmeld,opret konto,abonner,bliv medlem,afslut,opsig,"
        "ring op,ring til,deltag,bloker,anmeld,underskriv,genstart,luk ned,besvar,slå op,papirkurv,papirkurven,"
        "kassér,indsend,autentificer",
        "accepter,acceptér,godkend,bekræft,tillad,giv tilladelse,enig,jeg accepterer"},
    {"nb",
        "kjøp nå,kjøp,bestill,fullfør kjøp,til kassen,overfør,send penger,gi en gave,reserver,by nå,selg,slett,"
        "tøm papirkurven,tilbakestill,formater,overskriv,erstatt,ikke lagre,publiser,legg ut,avinstaller,oppdater nå,"
        "logg ut,logg av,logg inn,logg på,meld deg på,opprett konto,abonner,bli medlem,avslutt,si opp,ring opp,"
        "bli med,blokker,signer,start på nytt,slå av,last ned,last opp,videresend,papirkurv,papirkurven,forkast,"
        "send inn,nullstill,autentiser",
        "aksepter,godta,godkjenn,bekreft,tillat,samtykk,jeg godtar"},
    {"fi",
        "osta,osta nyt,maksa,tilaa nyt,siirry kassalle,tee tilaus,vahvista tilaus,siirrä rahaa,lähetä rahaa,lahjoita,"
        "varaa,huuda,myy,poista,poista asennus,tyhjennä,palauta asetukset,alusta levy,korvaa,älä tallenna,lähetä,"
        "vastaa,lähetä edelleen,julkaise,kommentoi,lataa,asenna,päivitä nyt,kirjaudu,kirjaudu ulos,rekisteröidy,"
        "luo tili,liity,peru tilaus,irtisano,soita,ilmoita,allekirjoita,lopeta,käynnistä uudelleen,sammuta,"
        "roskakoriin,hylkää,tunnistaudu,todenna,nollaa",
        "hyväksy,hyväksyn,vahvista,salli,suostun"},
    {"hu",
        "vásárlás,megvásárlás,megveszem,megvásárol,megvásárolom,vétel,fizetés,fizetek,kifizetés,kifizetem,"
        "megrendelés,megrendelem,rendelés elküldése,utalás,átutalás,átutal,pénzküldés,adományozás,foglalás,"
        "lefoglalás,lefoglalom,licitálok,eladás,törlés,törlöm,töröl,eltávolítás,kuka ürítése,lomtár ürítése,"
        "visszaállítás,formázás,felülírás,ne mentse,küldés,elküldés,elküld,elküldöm,küld,továbbítás,közzététel,"
        "megosztás,letöltés,feltöltés,telepítés,kijelentkezés,bejelentkezés,feliratkozás,leiratkozás,előfizetés,"
        "előfizetek,regisztráció,fiók létrehozása,hívás,csatlakozás,letiltás,bejelentem,aláírás,kilépés,újraindítás,"
        "kukába,lomtárba,eldobás,hitelesítés,törlése,küldése,végrehajtás",
        "elfogadás,elfogadom,elfogad,összes elfogadása,megerősítés,megerősít,megerősítem,jóváhagyás,jóváhagyom,"
        "engedélyezés,engedélyez,engedélyezem,egyetértek,hozzájárulok"},
    {"ro",
        "cumpără,cumpara acum,plătește,plătiți,plasează comanda,trimite comanda,finalizează comanda,comandă acum,"
        "transferă,virament,trimite bani,donează,rezervă acum,licitează,vinde,șterge,ștergeți,elimină,golește,"
        "resetează,formatează,suprascrie,înlocuiește,nu salva,trimite,trimiteți,răspunde,redirecționează,distribuie,"
        "partajează,comentează,descarcă,încarcă fișier,instalează,dezinstalează,deconectare,deconectează,conectare,"
        "conectează-te,autentificare,înregistrează-te,creează cont,abonează-te,abonare,dezabonare,apelează,"
        "alătură-te,blochează,raportează,semnează,repornește,oprește,la gunoi,la coș,autentifică,trimitere,"
        "reinițializare,actualizează acum",
        "acceptă,acceptați,sunt de acord,confirmă,confirmați,permite,permiteți,aprobă,autorizează"},
    {"tr",
        "satın al,hemen al,sipariş ver,siparişi tamamla,siparişi onayla,alışverişi tamamla,hemen öde,şimdi öde,"
        "ödeme yap,ödemeyi tamamla,ödemeye geç,havale,para gönder,para aktar,bağış yap,rezervasyon yap,teklif ver,"
        "kirala,bakiye yükle,sil,hepsini sil,kaldır,çöpü boşalt,boşalt,sıfırla,biçimlendir,üzerine yaz,değiştir,"
        "kaydetme,gönder,yanıtla,ilet,yayınla,paylaş,yorum yap,yükle,indir,güncelle,oturumu kapat,çıkış yap,"
        "oturum aç,giriş yap,kaydol,kayıt ol,üye ol,hesap oluştur,abone ol,abonelikten çık,arama yap,katıl,engelle,"
        "şikayet et,imzala,yeniden başlat,çalıştır,çöpe taşı,çöpe at,kimlik doğrula",
        "kabul et,kabul ediyorum,tümünü kabul et,onayla,onaylıyorum,izin ver"},
    {"el",
        "αγορά,αγορά τώρα,αγόρασε,αγοράστε,αγοράζω,πληρωμή,πληρώστε,πληρωνω,παραγγελία,παραγγείλτε,"
        "ολοκλήρωση παραγγελίας,ολοκλήρωση αγοράς,μεταφορά χρημάτων,έμβασμα,δωρεά,κράτηση,διαγραφή,διαγράψτε,"
        "κατάργηση,αφαίρεση,άδειασμα κάδου,επαναφορά,μορφοποίηση,αντικατάσταση,αποστολή,στείλτε,στείλε,υποβολή,"
        "απάντηση,προώθηση,δημοσίευση,κοινοποίηση,κοινή χρήση,σχόλιο,μεταφόρτωση,λήψη,εγκατάσταση,απεγκατάσταση,"
        "ενημέρωση τώρα,αποσύνδεση,έξοδος,σύνδεση,εγγραφή,δημιουργία λογαριασμού,συνδρομή,κατάργηση εγγραφής,κλήση,"
        "συμμετοχή,αποκλεισμός,αναφορά,υπογραφή,επανεκκίνηση,τερματισμός,απορρίμματα,απόρριψη,ταυτοποίηση,εκτέλεση",
        "αποδοχή,αποδέχομαι,αποδοχή όλων,συμφωνώ,επιβεβαίωση,επιτρέπεται,να επιτρέπεται,έγκριση"},
    {"ru",
        "купить,купи,купить сейчас,приобрести,оплатить,оплата,заплатить,перейти к оплате,заказать,оформить заказ,"
        "подтвердить заказ,перевести,перевод денег,отправить деньги,пополнить,пожертвовать,забронировать,арендовать,"
        "продать,сделать ставку,удалить,удаление,стереть,очистить,очистить корзину,сбросить,форматировать,"
        "перезаписать,заменить,не сохранять,отправить,отправка,послать,ответить,переслать,опубликовать,разместить,"
        "поделиться,комментировать,загрузить,скачать,установить,установка,выйти,выход,войти,вход,зарегистрироваться,"
        "регистрация,создать аккаунт,подписаться,оформить подписку,отписаться,позвонить,вызов,присоединиться,"
        "вступить,заблокировать,пожаловаться,подписать,завершить,перезагрузить,выполнить,запустить,"
        "переместить в корзину,отбросить,сброс,авторизоваться,обновить сейчас,выключить компьютер",
        "принять,принимаю,принять все,согласен,согласна,соглашаюсь,согласиться,подтвердить,подтверждаю,разрешить,"
        "одобрить,позволить"},
    {"uk",
        "купити,купити зараз,придбати,оплатити,сплатити,оплата,заплатити,замовити,оформити замовлення,"
        "підтвердити замовлення,переказати,переказ,надіслати гроші,поповнити,пожертвувати,забронювати,орендувати,"
        "продати,видалити,вилучити,стерти,очистити,скинути,форматувати,перезаписати,замінити,не зберігати,надіслати,"
        "відправити,відповісти,переслати,опублікувати,поширити,поділитися,коментувати,завантажити,встановити,"
        "установити,інсталювати,вийти,увійти,зареєструватися,створити обліковий запис,підписатися,скасувати підписку,"
        "зателефонувати,подзвонити,приєднатися,заблокувати,поскаржитися,підписати,завершити,перезавантажити,виконати,"
        "запустити,смітник,кошик для сміття,відкинути,автентифікувати,видалення,вилучення,надати доступ,оновити зараз",
        "прийняти,приймаю,прийняти всі,погоджуюся,погодитися,згоден,згодна,підтвердити,підтверджую,дозволити,схвалити"},
    {"ar",
        "شراء,الشراء,اشتر,اشتري,اشترِ الآن,اشتر الآن,دفع,الدفع,ادفع,ادفع الآن,إتمام الشراء,إتمام الطلب,اطلب,اطلب الآن,"
        "تأكيد الطلب,تحويل,حوّل,إرسال الأموال,تبرع,تبرّع,حجز,احجز,شحن الرصيد,حذف,الحذف,احذف,مسح,امسح,إزالة,أزل,إفراغ,"
        "إعادة تعيين,تهيئة,استبدال,عدم الحفظ,إرسال,الإرسال,أرسل,رد,الرد,إعادة توجيه,نشر,انشر,مشاركة,شارك,تعليق,رفع,"
        "تنزيل,تحميل,تثبيت,تنصيب,إلغاء التثبيت,تحديث الآن,تسجيل الخروج,خروج,تسجيل الدخول,إنشاء حساب,التسجيل,اشتراك,"
        "اشترك,إلغاء الاشتراك,اتصال,اتصل,مكالمة,انضمام,انضم,حظر,إبلاغ,توقيع,إنهاء,إعادة التشغيل,إيقاف التشغيل,"
        "المهملات,استبدل,استبدِل,تجاهل,نفّذ",
        "قبول,قبول الكل,أقبل,أوافق,موافق,موافقة,تأكيد,تأكيد الكل,السماح,سماح,اسمح"},
    {"he",
        "קנה,קנה עכשיו,קנו עכשיו,לקנייה,קנייה,רכישה,רכוש עכשיו,לרכישה,שלם,שלמו,לתשלום,תשלום,בצע הזמנה,בצע תשלום,"
        "הזמן עכשיו,הזמינו,העבר,העברה,העבר כסף,תרום,תרומה,לתרומה,טען,מחק,מחיקה,מחק הכל,הסר,הסרה,רוקן,איפוס,אתחול,"
        "החלף,אל תשמור,שלח,שלחו,שליחה,השב,העבר הלאה,פרסם,שתף,שיתוף,העלה,הורד,הורדה,התקן,התקנה,הסר התקנה,עדכן עכשיו,"
        "התנתק,התנתקות,יציאה,התחבר,התחברות,הירשם,הרשמה,צור חשבון,הרשם כמנוי,בטל מנוי,התקשר,חייג,הצטרף,חסום,דווח,חתום,"
        "הפעל מחדש,כיבוי,לאשפה,מחיקת,אימות",
        "אישור,אשר הכל,אני מסכים,אני מסכימה,מסכים,קבל הכל,קבל את,אפשר גישה,מאשר,מאשרת"},
    {"hi",
        "खरीदें,ख़रीदें,अभी खरीदें,खरीदारी करें,भुगतान,भुगतान करें,पेमेंट करें,पे करें,ऑर्डर करें,ऑर्डर दें,ट्रांसफर करें,ट्रांसफ़र करें,पैसे भेजें,दान करें,"
        "बुक करें,रिचार्ज करें,हटाएं,हटाएँ,मिटाएं,मिटाएँ,डिलीट,डिलीट करें,खाली करें,रीसेट करें,फ़ॉर्मैट करें,बदलें,भेजें,उत्तर दें,जवाब दें,"
        "अग्रेषित करें,फ़ॉरवर्ड करें,पोस्ट करें,प्रकाशित करें,शेयर करें,साझा करें,टिप्पणी करें,अपलोड करें,डाउनलोड करें,इंस्टॉल,इंस्टॉल करें,"
        "अनइंस्टॉल करें,अपडेट करें,लॉग आउट,लॉगआउट,साइन आउट,लॉग इन,साइन इन,साइन अप,खाता बनाएं,रजिस्टर करें,सदस्यता लें,सब्सक्राइब,"
        "सब्सक्राइब करें,कॉल करें,शामिल हों,ब्लॉक करें,रिपोर्ट करें,जमा करें,रीसेट,डाउनलोड",
        "स्वीकार,स्वीकार करें,सहमत,सहमत हूं,सहमत हूँ,पुष्टि करें,अनुमति दें,मंज़ूर करें"},
});

/// Languages that part their words by nothing, or add what they like behind them: anywhere in a text.
constexpr auto unspaced = std::to_array<Language>({
    {"zh",
        "购买,購買,立即买,立即買,买入,買入,抢购,搶購,下单,下單,提交订单,提交訂單,送出訂單,支付,付款,结算,結算,结账,"
        "結帳,結賬,转账,轉帳,轉賬,汇款,匯款,充值,儲值,提现,提現,预订,預訂,预定,預定,订购,訂購,订阅,訂閱,捐款,捐赠,"
        "捐贈,打赏,出价,出價,删除,刪除,移除,清空,抹掉,清除,重置,重設,格式化,覆盖,覆蓋,替换,取代,不保存,不儲存,发送,"
        "發送,传送,傳送,寄出,送出,提交,回复,回覆,转发,轉發,轉寄,发布,發布,發佈,发表,發表,分享,共享,评论,評論,上传,"
        "上傳,下载,下載,安装,安裝,卸载,卸載,解除安裝,立即更新,退出登录,退出登錄,登出,注销,註銷,登录,登錄,登入,注册,"
        "註冊,开通,開通,续费,續費,呼叫,拨打,撥打,打电话,打電話,通话,通話,加入会员,加入會員,举报,舉報,檢舉,拉黑,封鎖,"
        "屏蔽,关注,關注,签署,簽署,重新启动,重新啟動,重启,关机,關機,运行,執行,回收站,废纸篓,廢紙簍,垃圾桶,放弃更改,"
        "放棄變更,认证,認證,退出",
        "允许,允許,授权,授權,同意,接受,确认,確認,确定,確定,批准"},
    {"ja",
        "購入,買う,買い物を続行,注文,支払,決済,レジに進む,振込,振り込,送金,課金,チャージ,予約,入札,落札,寄付,"
        "応援する,送信,送る,送付,返信,転送,投稿,公開,共有,シェア,コメントする,ツイート,削除,消去,取り除,破棄,"
        "空にする,初期化,リセット,フォーマット,上書き,置き換え,置換,保存しない,アップロード,ダウンロード,"
        "インストール,アップデート,今すぐ更新,ログアウト,サインアウト,ログイン,サインイン,登録,購読,申し込,申込,退会,"
        "解約,電話をかける,電話する,発信,通話,参加,ブロック,通報,報告,応募,署名,再起動,シャットダウン,終了,実行,"
        "ゴミ箱,ごみ箱,認証",
        "許可,承認,承諾,同意,了承,確認,確定,受け入れ,受諾"},
    {"ko",
        "구매,구입,결제,주문,송금,이체,충전하기,예약,입찰,기부,후원,삭제,제거,지우기,비우기,초기화,포맷,덮어쓰기,"
        "바꾸기,저장 안,보내기,전송,발송,답장,전달,게시,공유,댓글 달기,업로드,다운로드,설치,업데이트,로그아웃,로그인,"
        "가입,등록,구독,탈퇴,해지,전화 걸기,전화하기,통화,참여,차단,신고,서명,다시 시작,종료,휴지통,버리기,인증,제출,"
        "끝내기",
        "허용,승인,동의,수락,확인"},
    {"th",
        "ชำระเงิน,จ่ายเงิน,สั่งซื้อ,โอนเงิน,เติมเงิน,บริจาค,จองเลย,ล้างข้อมูล,ตอบกลับ,โพสต์,เผยแพร่,แชร์,แบ่งปัน,อัปโหลด,ดาวน์โหลด,ติดตั้ง,"
        "ออกจากระบบ,เข้าสู่ระบบ,สมัคร,โทรออก,เข้าร่วม,บล็อก,รายงาน,ซื้อเลย,ซื้อสินค้า,ซื้อทันที,ลบทั้งหมด,ลบข้อมูล,ลบไฟล์,ลบข้อความ,ลบบัญชี,"
        "ส่งข้อความ,ส่งอีเมล,ส่งเงิน,ถังขยะ,ละทิ้ง,แทนที่,เขียนทับ,เข้าระบบ,เอาออก",
        "ยอมรับ,ยืนยัน,ตกลง,อนุญาต"},
});

/// Words that another language needs for something harmless: only where nothing else is said.
constexpr auto wholeLabels = std::to_array<Text>({"zahlen", "leeren", "commander", "inscription", "connexion",
    "désactiver", "compra", "compre", "firma", "ordina", "pubblica", "dona", "carica", "entrar", "ligar", "delen",
    "plaatsen", "bel", "plaats", "dela", "ring", "del", "svar", "doner", "donér", "tilaa", "siirrä", "jaa", "estä",
    "válasz", "csere", "jelentés", "comandă", "publică", "rezervă", "sună", "öde", "kur", "אשר", "אפשר", "קבל", "הזמן",
    "买", "買", "付", "删", "刪", "发", "發", "寄", "ซื้อ", "ลบ", "ส่ง"});

/// Parts of words.
constexpr auto cookieNames = std::to_array<Text>({"cookie", "evästei", "evästee", "ciasteczk", "informasjonskaps",
    "kakor", "süti", "çerez", "куки", "تعريف الارتباط", "الكوكيز", "עוגיות", "कुकी", "クッキー", "쿠키", "คุกกี้"});

constexpr auto foreignAgreements = std::to_array<Text>({"ja", "jawohl", "ja alle", "weiter", "fortfahren", "oui",
    "continuer", "poursuivre", "sí", "si", "continuar", "sì", "continua", "sim", "avançar", "doorgaan", "tak",
    "kontynuuj", "dalej", "ano", "pokračovat", "fortsätt", "fortsæt", "fortsett", "kyllä", "jatka", "igen", "folytatás",
    "tovább", "da", "continuă", "evet", "devam", "devam et", "tamam", "ναι", "συνέχεια", "да", "продолжить", "так",
    "продовжити", "نعم", "متابعة", "כן", "המשך", "हाँ", "हां", "जारी रखें", "是", "是的", "继续", "繼續", "はい", "続行",
    "続ける", "예", "네", "계속", "ใช่", "ดำเนินการต่อ"});

/// What a label says beside the signs around it: "← Del …".
std::string_view wholeLabel(std::string_view lower)
{
    constexpr std::size_t longest = 64; // Bytes; no entry is as long.
    if (lower.size() > longest)
        return {};
    std::size_t start = 0;
    std::size_t end = 0;
    bool hasLetter = false;
    for (std::size_t position = 0; position < lower.size();) {
        const std::size_t here = position;
        // Marks of scripts whose vowels are marks belong to their words.
        if ((U_MASK(u_charType(static_cast<UChar32>(nextCodePoint(lower, position)))) & (U_GC_L_MASK | U_GC_M_MASK))
            == 0)
            continue;
        start = hasLetter ? start : here;
        end = position;
        hasLetter = true;
    }
    return lower.substr(start, end - start);
}

const WordMatcher& cookies()
{
    static constexpr auto noEndings = std::to_array<Text>({""});
    static const WordMatcher matcher(cookieNames, noEndings, WordMatcher::Bounds::none);
    return matcher;
}

} // namespace

bool ForeignWords::saysThatItActs(const JudgedText& label)
{
    static const LanguageMatcher words(spaced, WordMatcher::Bounds::letters);
    static const LanguageMatcher parts(unspaced, WordMatcher::Bounds::none);
    if (isOneOf(wholeLabels, wholeLabel(label.lower())))
        return true;
    const auto word = words.meaningOf(label);
    const auto part = isAscii(label.lower()) ? std::nullopt : parts.meaningOf(label);
    if (word == LabelMeaning::acting || part == LabelMeaning::acting)
        return true;
    return (word || part) && !cookies().firstInWritten(label.lower());
}

bool ForeignWords::isBareAgreement(std::string_view label)
{
    constexpr std::size_t longest = 64; // Bytes; none of them is as long.
    return label.size() <= longest && isOneOf(foreignAgreements, wholeLabel(lowerCased(label)));
}

} // namespace quorvell
