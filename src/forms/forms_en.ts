<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="ja">
<context>
    <name>forms</name>
    <message>
        <source>メイン</source>
        <translation>&amp;Main</translation>
    </message>
    <message>
        <source>その他</source>
        <translation>&amp;Other</translation>
    </message>
    <message>
        <source>スキン</source>
        <translation>Sk&amp;ins</translation>
    </message>
    <message>
        <source>BMS検索</source>
        <translation>Chart &amp;folders</translation>
    </message>
    <message>
        <source>基本的に、設定は項目にマウスカーソルを持っていくと出る「ツールチップ」を参考にしてください。</source>
        <translation>Hold the mouse over a setting to read what it does.</translation>
    </message>
    <message>
        <source>起動</source>
        <translation>&amp;Start</translation>
    </message>
    <message>
        <source>検索中止</source>
        <translation>S&amp;top search</translation>
    </message>
    <message>
        <source>検索の進み具合</source>
        <translation>Progress of the search</translation>
    </message>
    <message>
        <source>基本設定</source>
        <translation>General</translation>
    </message>
    <message>
        <source>WAVEロード方法:</source>
        <translation>Load sounds:</translation>
    </message>
    <message>
        <source>BMPロード方法:</source>
        <translation>Load pictures:</translation>
    </message>
    <message>
        <source>Course play時:</source>
        <translation>In a course:</translation>
    </message>
    <message>
        <source>初回一括</source>
        <translation>All at first</translation>
    </message>
    <message>
        <source>逐次読込</source>
        <translation>When needed</translation>
    </message>
    <message>
        <source>曲ごと</source>
        <translation>Song by song</translation>
    </message>
    <message>
        <source>逐次読み込みはHDDが速い場合は効果があります。</source>
        <translation>Loading when needed pays off with a fast disk.</translation>
    </message>
    <message>
        <source>BGAの逐次読み込みはお勧めしません</source>
        <translation>Loading pictures when needed is not recommended.</translation>
    </message>
    <message>
        <source>メモリーが裕福な環境は一括でokです。普通は曲ごとがいいかも。</source>
        <translation>With plenty of memory load all at first; song by song is right for most.</translation>
    </message>
    <message>
        <source>BGA逐次解放を有効にする</source>
        <translation>Release used pictures</translation>
    </message>
    <message>
        <source>最近の書式のBMSを読む(Wide)</source>
        <translation>Read charts of today (wide reading)</translation>
    </message>
    <message>
        <source>FFより先の番号、停止、ロングノート、UTF-8などを読みます。スコアは別に保存されます。</source>
        <translation>Slots beyond FF, stops, long notes, UTF-8 and more. Scores are kept apart.</translation>
    </message>
    <message>
        <source>プレイ中BGAが必要なくなった時点でメモリから解放します。</source>
        <translation>Frees a picture's memory once the play needs it no more.</translation>
    </message>
    <message>
        <source>キーコンフィグ</source>
        <translation>&amp;Keys and controllers...</translation>
    </message>
    <message>
        <source>プレイ関連</source>
        <translation>Play</translation>
    </message>
    <message>
        <source>画面色数:</source>
        <translation>Colours:</translation>
    </message>
    <message>
        <source>スキン:</source>
        <translation>Skin:</translation>
    </message>
    <message>
        <source>DrawLimit:</source>
        <translation>Drawing:</translation>
    </message>
    <message>
        <source>8bit(256)</source>
        <translation>8 bit (256)</translation>
    </message>
    <message>
        <source>16bit(65536)</source>
        <translation>16 bit (65,536)</translation>
    </message>
    <message>
        <source>24bit(16777216)</source>
        <translation>24 bit (16,777,216)</translation>
    </message>
    <message>
        <source>32bit(16777216)</source>
        <translation>32 bit (16,777,216)</translation>
    </message>
    <message>
        <source>画面色数は基本的に16bitで。8bitはかなり荒れます。</source>
        <translation>16 bit suits most; 8 bit looks rather coarse.</translation>
    </message>
    <message>
        <source>使用するスキンファイルを選択します。ゲーム中もF9キーで切り替え可能です。</source>
        <translation>The skin to be used. F9 changes it in the game, too.</translation>
    </message>
    <message>
        <source>無制限(1)</source>
        <translation>Everything (1)</translation>
    </message>
    <message>
        <source>ちょっと制限(2)</source>
        <translation>A little less (2)</translation>
    </message>
    <message>
        <source>かなり制限(3)</source>
        <translation>Much less (3)</translation>
    </message>
    <message>
        <source>描画制限を行います。制限するほど軽くはなりますがかなりアレです。プレイ中もF11キーで切り替え可能です</source>
        <translation>Draws less, which is faster and not as pretty. F11 changes it in a play, too.</translation>
    </message>
    <message>
        <source>※遅いときはこの辺弄るといいかもー</source>
        <translation>Try these when the game is slow.</translation>
    </message>
    <message>
        <source>拡大処理を無効にする</source>
        <translation>No enlarging</translation>
    </message>
    <message>
        <source>拡大処理を行わないようにします。遅いグラフィック用。</source>
        <translation>Enlarges nothing, for slow graphics.</translation>
    </message>
    <message>
        <source>FlipではなくBltを行います。必要時のみチェックしてください</source>
        <translation>Shows frames by a copy and not by a flip. Only where it is needed.</translation>
    </message>
    <message>
        <source>垂直回帰信号と同期しません。必要時のみチェックしてください。(特にDirectBlt時は不安定になります。)</source>
        <translation>Does not wait for the screen. Only where it is needed (unsteady above all with DirectBlt).</translation>
    </message>
    <message>
        <source>use another BGA Stretch Method </source>
        <translation>Another way to enlarge pictures</translation>
    </message>
    <message>
        <source>G400等で通常ではBGA拡大がまともに動かないときにチェックしてください。</source>
        <translation>For graphics that fail to enlarge the chart's pictures in the usual way.</translation>
    </message>
    <message>
        <source>コース曲変わり目エフェクト</source>
        <translation>Effect between the songs of a course</translation>
    </message>
    <message>
        <source>コースの曲の変わり目でステージ画像を表示します</source>
        <translation>Shows the title picture where one song of a course follows another.</translation>
    </message>
    <message>
        <source>曲セレ関連</source>
        <translation>Song list</translation>
    </message>
    <message>
        <source>BMS Preview 機能を有効にする</source>
        <translation>Preview of the chosen chart</translation>
    </message>
    <message>
        <source>曲セレ時にその曲をプレビューできます。</source>
        <translation>Plays the chart in hand while you choose.</translation>
    </message>
    <message>
        <source>秒後に再生開始</source>
        <translation>seconds until it begins</translation>
    </message>
    <message>
        <source>Endlessモードは1P曲のみ</source>
        <translation>Endless: one-player charts only</translation>
    </message>
    <message>
        <source>Endlessモードの時に1p曲以外が出なくなります。</source>
        <translation>Only charts for one player come in an endless run.</translation>
    </message>
    <message>
        <source>曲リストをスムーズスクロールしない</source>
        <translation>List moves at once</translation>
    </message>
    <message>
        <source>曲リストをスムーズにスクロールしません。</source>
        <translation>The list jumps to the next row instead of gliding.</translation>
    </message>
    <message>
        <source>クリアした曲は文字色を変える</source>
        <translation>Mark cleared charts</translation>
    </message>
    <message>
        <source>クリアした曲はリストで文字色が変わります。但し仮実装</source>
        <translation>Cleared charts have another colour in the list.</translation>
    </message>
    <message>
        <source>ネットワーク</source>
        <translation>Network</translation>
    </message>
    <message>
        <source>あなたの名前:</source>
        <translation>Your name:</translation>
    </message>
    <message>
        <source>※スコアランクのデフォルト名にもなります。</source>
        <translation>Also the first name for the score tables.</translation>
    </message>
    <message>
        <source>サーバーのアドレス:</source>
        <translation>Address of the host:</translation>
    </message>
    <message>
        <source>空欄なら近くのサーバーを探します</source>
        <translation>empty: look for one nearby</translation>
    </message>
    <message>
        <source>接続</source>
        <translation>&amp;Connect</translation>
    </message>
    <message>
        <source>サーバーへ接続します。</source>
        <translation>Joins the battle of another player.</translation>
    </message>
    <message>
        <source>サーバー起動</source>
        <translation>&amp;Host</translation>
    </message>
    <message>
        <source>自らをサーバーとして起動します。</source>
        <translation>Opens a battle for others to join.</translation>
    </message>
    <message>
        <source>サーバーを探しています…</source>
        <translation>Looking for a host...</translation>
    </message>
    <message>
        <source>サーバーが見つかりません。</source>
        <translation>No host was found.</translation>
    </message>
    <message>
        <source>サーバーを起動できません。</source>
        <translation>The battle could not be opened.</translation>
    </message>
    <message>
        <source>接続しました。開始を待っています。</source>
        <translation>Connected. Waiting for the host to start.</translation>
    </message>
    <message>
        <source>その他の設定</source>
        <translation>Other settings</translation>
    </message>
    <message>
        <source>ハーフ(奇)</source>
        <translation>Half size (odd)</translation>
    </message>
    <message>
        <source>Windowモード(同時にDirectBltをチェックすべし)</source>
        <translation>In a window (ticks DirectBlt, too)</translation>
    </message>
    <message>
        <source>画面の拡大:</source>
        <translation>Full screen:</translation>
    </message>
    <message>
        <source>自動</source>
        <translation>Automatic</translation>
    </message>
    <message>
        <source>整数倍のみ</source>
        <translation>Whole multiples</translation>
    </message>
    <message>
        <source>画面いっぱい</source>
        <translation>To the edges</translation>
    </message>
    <message>
        <source>全画面での拡大方法です。自動では、整数倍で大きく余る画面だけいっぱいに拡大します。</source>
        <translation>How full screen enlarges the game. Automatic goes to the edges only where a whole multiple would leave much of the screen empty.</translation>
    </message>
    <message>
        <source>内部オブジェ数上限:</source>
        <translation>Most objects of a chart:</translation>
    </message>
    <message>
        <source>内部で確保するオブジェ配列の数を指定します。コース時で曲多いと固まる時に。</source>
        <translation>How many objects there is room for. For courses of many songs that do not load.</translation>
    </message>
    <message>
        <source>ヘタに弄ると死にます。</source>
        <translation>Careful: wrong numbers keep charts from loading.</translation>
    </message>
    <message>
        <source>スキンマッパー</source>
        <translation>Skins by mode</translation>
    </message>
    <message>
        <source>それぞれの時にロードするスキンを割り当てます。なお、プレイ中に変更(F9キー)した場合はそのファイル名が保存されます。</source>
        <translation>The skin that each mode of play loads. A change in a play (F9) is kept here.</translation>
    </message>
    <message>
        <source>スキンのファイルが変わったら読み直す</source>
        <translation>Read a skin anew when one of its files changes</translation>
    </message>
    <message>
        <source>スキンを作る人のために、保存するたびに画面へ反映します。間違いは画面に行番号で示し、直るまで前のスキンのまま続けます。</source>
        <translation>For authors of skins: what they save is on the screen at once. What is wrong stands there with its line, and the skin before stays until it is mended.</translation>
    </message>
    <message>
        <source>スクラッチ配置</source>
        <translation>Side of the turntable</translation>
    </message>
    <message>
        <source>左</source>
        <translation>Left</translation>
    </message>
    <message>
        <source>右</source>
        <translation>Right</translation>
    </message>
    <message>
        <source>BMS検索パス</source>
        <translation>Folders of charts</translation>
    </message>
    <message>
        <source>エクスプローラからフォルダをドラッグ&amp;ドロップでも追加できます</source>
        <translation>Folders can be dragged here from the file manager, too.</translation>
    </message>
    <message>
        <source>検索対象をチェックして「検索開始」してください。検索開始を押すまでリストは保存されません。&#xd;
追加はリストに直接フォルダをドラッグ&amp;&amp;ドロップしてもOKです。</source>
        <translation>Tick the folders to be searched and press "Search". The list is not saved until then.&#xd;
Folders can be dropped on the list, too.</translation>
    </message>
    <message>
        <source>追加</source>
        <translation>&amp;Add...</translation>
    </message>
    <message>
        <source>追加は左のリストへドラッグ&amp;ドロップでも行えます。</source>
        <translation>Folders can be dropped on the list at the left, too.</translation>
    </message>
    <message>
        <source>削除</source>
        <translation>&amp;Remove</translation>
    </message>
    <message>
        <source>無確認で削除</source>
        <translation>Remove without asking</translation>
    </message>
    <message>
        <source>階層無制限に検索</source>
        <translation>Search at any depth</translation>
    </message>
    <message>
        <source>検索する階層を制限しません。</source>
        <translation>Looks into folders however deep they lie.</translation>
    </message>
    <message>
        <source>検索開始</source>
        <translation>S&amp;earch</translation>
    </message>
    <message>
        <source>検索パスの追加</source>
        <translation>Add a folder of charts</translation>
    </message>
    <message>
        <source>を削除してもよろしいですか?</source>
        <translation>: remove this folder from the list?</translation>
    </message>
    <message>
        <source>%1
このフォルダは追加できません。リストに保存できない文字があります: %2</source>
        <translation>%1
This folder cannot be added. The list cannot hold these characters of its name: %2</translation>
    </message>
    <message>
        <source>はい(&amp;Y)</source>
        <translation>&amp;Yes</translation>
    </message>
    <message>
        <source>いいえ(&amp;N)</source>
        <translation>&amp;No</translation>
    </message>
    <message>
        <source>数ではありません。</source>
        <translation>This is no number.</translation>
    </message>
    <message>
        <source>BMSファイルが見つかりません。「BMS再検索」で検索フォルダを追加してBMS検索をしてください。</source>
        <translation>No chart was found. Add the folders of your charts under "Chart folders" and search there.</translation>
    </message>
    <message>
        <source>音</source>
        <translation>Soun&amp;d</translation>
    </message>
    <message>
        <source>音の装置</source>
        <translation>Sound device</translation>
    </message>
    <message>
        <source>%1 フレーム (%2)</source>
        <translation>%1 frames (%2)</translation>
    </message>
    <message>
        <source>小さいほどキーの音が早く鳴りますが、遅い環境では音が途切れます。ゲームもこの値を使います。</source>
        <translation>The smaller, the sooner a key sounds; on a slow machine the sound then has gaps. The game asks for the same block.</translation>
    </message>
    <message>
        <source>頼むブロック:</source>
        <translation>Block asked for:</translation>
    </message>
    <message>
        <source>得たブロック:</source>
        <translation>Block got:</translation>
    </message>
    <message>
        <source>装置:</source>
        <translation>Device:</translation>
    </message>
    <message>
        <source>装置の先読み:</source>
        <translation>Taken in advance:</translation>
    </message>
    <message>
        <source>遅れたブロック:</source>
        <translation>Late blocks:</translation>
    </message>
    <message>
        <source>テスト音</source>
        <translation>Test tone</translation>
    </message>
    <message>
        <source>1秒間、ラの音(440Hz)を鳴らします。</source>
        <translation>Sounds an A (440 Hz) for a second.</translation>
    </message>
    <message>
        <source>先読みを測る</source>
        <translation>Measure the advance</translation>
    </message>
    <message>
        <source>装置を一度空にして、どれだけ先の音まで受け取るかを測ります。他の音も一瞬途切れることがあります。</source>
        <translation>Lets the device run dry once and measures how much sound it takes in advance. Other programs may fall silent for a moment, too.</translation>
    </message>
    <message>
        <source>キーを押すと、次のブロックの頭から音が出ます。その前に、装置が先読みした分が鳴り終わります。システムがさらに溜める分は、ここでは分かりません。</source>
        <translation>A key sounds from the start of the next block, behind what the device has taken in advance. What the system keeps beyond that cannot be seen from here.</translation>
    </message>
    <message>
        <source>キー</source>
        <translation>Keys</translation>
    </message>
    <message>
        <source>表示を待つ間もキーを受け付ける</source>
        <translation>Serve keys while a picture waits to be shown</translation>
    </message>
    <message>
        <source>できた画面が表示されるのを待つ間に押したキーの音が、次の画面ではなく、次のブロックで鳴ります。判定は、その画面の位置で行います。</source>
        <translation>A key that goes down while a finished picture waits for the screen sounds with the next block and not with the next picture. It is judged at the position of that picture.</translation>
    </message>
    <message>
        <source>タップテスト</source>
        <translation>Tapping test</translation>
    </message>
    <message>
        <source>20回のクリック音に合わせて、好きなキーを叩いてください。最初の4回は数えません。Escでやめます。</source>
        <translation>Tap any key with each of 20 clicks. The first four are not counted. Esc stops it.</translation>
    </message>
    <message>
        <source>+はキーが音より後。測れるのは、音を作ってから耳に届き、手が動き、キーがここに届くまでの全部です。音の遅れとキーの遅れと叩く人の癖(たいてい数十ms早い)は分けられません。</source>
        <translation>+ means that the key came later. What is measured is the whole way from the making of a click to your ear, your hand and the key's arrival here: the delay of the sound, that of the key, and your own habit (most people tap some tens of ms early) cannot be told apart.</translation>
    </message>
    <message>
        <source>音を出せません。</source>
        <translation>No sound can be heard.</translation>
    </message>
    <message>
        <source>音は聞こえません</source>
        <translation>nobody hears it</translation>
    </message>
    <message>
        <source>まだ測っていません</source>
        <translation>not measured yet</translation>
    </message>
    <message>
        <source>いま %1、前回のプレイ %2</source>
        <translation>now %1, in the last play %2</translation>
    </message>
    <message>
        <source>始める</source>
        <translation>Begin</translation>
    </message>
    <message>
        <source>叩いてください (%1回)</source>
        <translation>Tap now (%1 so far)</translation>
    </message>
    <message>
        <source>中央値 %1、真ん中の半分の幅 %2、%3回</source>
        <translation>Median %1, middle half within %2, %3 taps</translation>
    </message>
    <message>
        <source>足りません。8回以上、音の近くで叩いてください。</source>
        <translation>Not enough. Tap at least 8 times, close to the clicks.</translation>
    </message>
</context>
<context>
    <name>KeyConfig</name>
    <message>
        <source>設定したいボタンをクリックして、そのキーを押してください。1,2でも移動可能です。</source>
        <translation>Click what you want to set, and press its key. The keys 1 and 2 move the frame, too.</translation>
    </message>
    <message>
        <source>特殊キー</source>
        <translation>Special keys</translation>
    </message>
    <message>
        <source>コントローラー用。キーボード時は不要です。
ESCをSTART、★をSELECTに割り当てると吉。</source>
        <translation>For controllers, not for the keyboard.
Best put ESC on START and ★ on SELECT.</translation>
    </message>
    <message>
        <source>(回転方向)</source>
        <translation>(way it turns)</translation>
    </message>
    <message>
        <source>XY軸移動を検知</source>
        <translation>Detect the X and Y axes</translation>
    </message>
    <message>
        <source>方向入力を検知します。結構敏感に反応する設定にしてます。</source>
        <translation>Takes the directions of a stick as inputs. Small movements are enough.</translation>
    </message>
    <message>
        <source>コントローラはID1,2のみ有効です。認識数:</source>
        <translation>Only controllers 1 and 2 are used. Found: </translation>
    </message>
    <message>
        <source>初期状態</source>
        <translation>Defaults</translation>
    </message>
    <message>
        <source>クリア</source>
        <translation>Clear</translation>
    </message>
    <message>
        <source>設定完了</source>
        <translation>Done</translation>
    </message>
    <message>
        <source>キャンセル</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>機能と入力の一覧</source>
        <translation>Functions and their inputs</translation>
    </message>
    <message>
        <source>キー番号 %1 → %2</source>
        <translation>key number %1 → %2</translation>
    </message>
    <message>
        <source>機能なし</source>
        <translation>nothing</translation>
    </message>
    <message>
        <source> (%1P 鍵盤 %2)</source>
        <translation> (%1P key %2)</translation>
    </message>
    <message>
        <source> (%1P スクラッチ %2)</source>
        <translation> (%1P turntable %2)</translation>
    </message>
    <message>
        <source>前の機能へ</source>
        <translation>the function before</translation>
    </message>
    <message>
        <source>次の機能へ</source>
        <translation>the next function</translation>
    </message>
    <message>
        <source>押しているキーの番号と機能がここに表示されます。</source>
        <translation>Held keys show here, by their numbers and what they do.</translation>
    </message>
</context>
</TS>
