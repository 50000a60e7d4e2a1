// The names of the shared settings table and of the message fields that the product's
// modules share, one constant a name, whose text is the name itself letter by letter (old
// misspellings included, since other modules read and write these rows). The kernel itself
// uses only the keys of its settings caches; the rest is carried so that every module spells
// a key the same way.
#ifndef COMMON_INCLUDES_CONFIG_KEY_NAMES_H_
#define COMMON_INCLUDES_CONFIG_KEY_NAMES_H_

namespace cfg_names {

// Keys that this kernel reads or writes itself.
inline constexpr char k_thumb_type[] = "thumb_type";
inline constexpr char k_thumb_base_path[] = "thumb_base_path";
inline constexpr char k_download_path[] = "download_path";
inline constexpr char k_disk_rw_flag[] = "disk_rw_flag";
inline constexpr char k_fea_all_got_notify_switch[] = "fea_all_got_notify_switch";
inline constexpr char k_ui_hide_jsn[] = "ui_hide_jsn";
inline constexpr char k_show_unscanned_file_type[] = "show_unscanned_file_type";
inline constexpr char k_all_type_for_img[] = "all_type_for_img";
inline constexpr char k_opencv_typ[] = "opencv_typ";
inline constexpr char k_easy_psd_max_size[] = "easy_psd_max_size";
inline constexpr char k_alpha_white_png_cfg[] = "alpha_white_png_cfg";
inline constexpr char k_cfg_jc_path[] = "cfg_jc_path";
inline constexpr char k_cfg_ink_plugin_path[] = "cfg_ink_plugin_path";
inline constexpr char k_local_port_list[] = "local_port_list";
inline constexpr char k_nat_port_list[] = "nat_port_list";
inline constexpr char k_meta_srv_port_lst[] = "meta_srv_port_lst";
inline constexpr char k_meta_srv_good_port[] = "meta_srv_good_port";

// Product folders: Folders and files of an installation, as resolved at run time, and the folder
// names under them.
inline constexpr char k_kvn_install_dir[] = "kvn_install_dir";
inline constexpr char k_kvn_root_data_dir[] = "kvn_root_data_dir";
inline constexpr char k_kvn_local_data_dir[] = "kvn_local_data_dir";
inline constexpr char k_kvn_scan_data_dir[] = "kvn_scan_data_dir";
inline constexpr char k_kvn_preview_dir[] = "kvn_preview_dir";
inline constexpr char k_kvn_download_dir[] = "kvn_download_dir";
inline constexpr char k_kvn_update_dir[] = "kvn_update_dir";
inline constexpr char k_kvn_tmp_dir[] = "kvn_tmp_dir";
inline constexpr char k_kvn_log_dir[] = "kvn_log_dir";
inline constexpr char k_kvn_deploy_log_dir[] = "kvn_deploy_log_dir";
inline constexpr char k_kvn_ai_dir[] = "kvn_ai_dir";
inline constexpr char k_kvn_python_dir[] = "kvn_python_dir";
inline constexpr char k_kvn_conda_dir[] = "kvn_conda_dir";
inline constexpr char k_kvn_module_file[] = "kvn_module_file";
inline constexpr char k_tmp_download[] = "tmp_download";
inline constexpr char k_KorvaneData[] = "KorvaneData";
inline constexpr char k_KorvaneDownload[] = "KorvaneDownload";
inline constexpr char k_KorvanePreview[] = "KorvanePreview";
inline constexpr char k_KorvaneAutoLabel[] = "KorvaneAutoLabel";
inline constexpr char k_KorvaneScanLabel[] = "KorvaneScanLabel";
inline constexpr char k_query_tmp[] = "query_tmp";
inline constexpr char k_upload_tmp[] = "upload_tmp";
inline constexpr char k_plugin_dir[] = "plugin_dir";
inline constexpr char k_install_pkg_path[] = "install_pkg_path";
inline constexpr char k_onewrapper_path[] = "onewrapper_path";
inline constexpr char k_users[] = "users";
inline constexpr char k__cutsome_jpg[] = "_cutsome.jpg";

// Data files: Names of the database file and of the feature store files.
inline constexpr char k_localdata_dat[] = "localdata.dat";
inline constexpr char k_feature_dat[] = "feature.dat";
inline constexpr char k_feature_1_dat[] = "feature_1.dat";
inline constexpr char k_feature_backup_dat[] = "feature_backup.dat";
inline constexpr char k_feature_tmp_dat[] = "feature_tmp.dat";
inline constexpr char k_feature_zip_dat[] = "feature_zip.dat";
inline constexpr char k_feature_zip_backup_dat[] = "feature_zip_backup.dat";
inline constexpr char k_feature_zip_tmp_dat[] = "feature_zip_tmp.dat";
inline constexpr char k_featureID[] = "featureID";
inline constexpr char k_other_fea_bytes[] = "other_fea_bytes";
inline constexpr char k_is_zip_feature[] = "is_zip_feature";
inline constexpr char k_update_feature_info[] = "update_feature_info";

// Document scan: When and where documents are scanned, and which types.
inline constexpr char k_scan_docs_always_path[] = "scan_docs_always_path";
inline constexpr char k_scan_docs_feature_switch[] = "scan_docs_feature_switch";
inline constexpr char k_scan_docs_feature_time[] = "scan_docs_feature_time";
inline constexpr char k_scan_docs_frequence[] = "scan_docs_frequence";
inline constexpr char k_scan_docs_last_scan_time[] = "scan_docs_last_scan_time";
inline constexpr char k_scan_docs_next_scan_time[] = "scan_docs_next_scan_time";
inline constexpr char k_scan_docs_once_path[] = "scan_docs_once_path";
inline constexpr char k_scan_docs_show_hidden[] = "scan_docs_show_hidden";
inline constexpr char k_scan_docs_type_cancel_bit[] = "scan_docs_type_cancel_bit";
inline constexpr char k_scan_docs_type_filter[] = "scan_docs_type_filter";
inline constexpr char k_scan_docs_wait_path[] = "scan_docs_wait_path";
inline constexpr char k_scan_docs_zip_max_size[] = "scan_docs_zip_max_size";
inline constexpr char k_scan_docs_zip_type[] = "scan_docs_zip_type";

// General scanning: The scan service: folders to scan, schedule, time limits, type lists and file
// change monitoring.
inline constexpr char k_scan_disk[] = "scan_disk";
inline constexpr char k_scan_path[] = "scan_path";
inline constexpr char k_ScannWaitPath[] = "ScannWaitPath";
inline constexpr char k_scan_dir_max_cnt[] = "scan_dir_max_cnt";
inline constexpr char k_scan_info_page_size[] = "scan_info_page_size";
inline constexpr char k_scan_label_max[] = "scan_label_max";
inline constexpr char k_scan_remote_ctrl[] = "scan_remote_ctrl";
inline constexpr char k_scan_vol_guid_chg[] = "scan_vol_guid_chg";
inline constexpr char k_conf_vol_guid_chg[] = "conf_vol_guid_chg";
inline constexpr char k_scan_with_file_chg_switch[] = "scan_with_file_chg_switch";
inline constexpr char k_scan_timeout_minute[] = "scan_timeout_minute";
inline constexpr char k_scan_heart_cycle[] = "scan_heart_cycle";
inline constexpr char k_scan_fea_timeout[] = "scan_fea_timeout";
inline constexpr char k_auto_scan_switch[] = "auto_scan_switch";
inline constexpr char k_update_scan_path_flag[] = "update_scan_path_flag";
inline constexpr char k_path_update_flag[] = "path_update_flag";
inline constexpr char k_add_select_folder[] = "add_select_folder";
inline constexpr char k_del_select_folder[] = "del_select_folder";
inline constexpr char k_restore_sel_folder[] = "restore_sel_folder";
inline constexpr char k_last_scan_ok_cnts[] = "last_scan_ok_cnts";
inline constexpr char k_next_scan_time[] = "next_scan_time";
inline constexpr char k_stop_scan_clk[] = "stop_scan_clk";
inline constexpr char k_ctr_bit[] = "ctr_bit";
inline constexpr char k_cache_docs_dir_key[] = "cache_docs_dir_key";
inline constexpr char k_night_scan_start_clk[] = "night_scan_start_clk";
inline constexpr char k_night_scan_start_range[] = "night_scan_start_range";
inline constexpr char k_use_scan_exe[] = "use_scan_exe";
inline constexpr char k_file_chg_monitor_cycle[] = "file_chg_monitor_cycle";
inline constexpr char k_mid_root_level[] = "mid_root_level";
inline constexpr char k_md5_by_cmd[] = "md5_by_cmd";
inline constexpr char k_old_office_type[] = "old_office_type";
inline constexpr char k_py_extract_img_type[] = "py_extract_img_type";
inline constexpr char k_all_type_for_txt[] = "all_type_for_txt";
inline constexpr char k_sel_type_for_txt[] = "sel_type_for_txt";
inline constexpr char k_fea_dir_min_mb_space[] = "fea_dir_min_mb_space";
inline constexpr char k_fea_error_moved[] = "fea_error_moved";
inline constexpr char k_xlsx_meta[] = "xlsx_meta";
inline constexpr char k_type_which_has_detail[] = "type_which_has_detail";
inline constexpr char k_reset_jpeg_detail[] = "reset_jpeg_detail";
inline constexpr char k_restore_sharp_color[] = "restore_sharp_color";
inline constexpr char k_graph_magic_type_size_limit_key[] = "graph_magic_type_size_limit_key";
inline constexpr char k_chk_file_md5_cycle[] = "chk_file_md5_cycle";
inline constexpr char k_previous_preview_move_path[] = "previous_preview_move_path";
inline constexpr char k_preview_move_complete_flag[] = "preview_move_complete_flag";

// Fonts: The font service, and the synchronisation of fonts with the cloud (cld) and the local
// side (loc).
inline constexpr char k_font_active_app_key[] = "font_active_app_key";
inline constexpr char k_font_scan_cycle[] = "font_scan_cycle";
inline constexpr char k_font_service_admin_exe[] = "font_service_admin.exe";
inline constexpr char k_font_service_admin_ip[] = "font_service_admin_ip";
inline constexpr char k_font_service_admin_port[] = "font_service_admin_port";
inline constexpr char k_font_service_names[] = "font_service_names";
inline constexpr char k_font_service_send_timeout_seconds[] = "font_service_send_timeout_seconds";
inline constexpr char k_font_sync_2_cld_cnt[] = "font_sync_2_cld_cnt";
inline constexpr char k_font_sync_2_cld_err_name[] = "font_sync_2_cld_err_name";
inline constexpr char k_font_sync_2_cld_path[] = "font_sync_2_cld_path";
inline constexpr char k_font_sync_2_cld_time[] = "font_sync_2_cld_time";
inline constexpr char k_font_sync_2_loc_cnt[] = "font_sync_2_loc_cnt";
inline constexpr char k_font_sync_2_loc_err_name[] = "font_sync_2_loc_err_name";
inline constexpr char k_font_sync_2_loc_path[] = "font_sync_2_loc_path";
inline constexpr char k_font_sync_2_loc_time[] = "font_sync_2_loc_time";
inline constexpr char k_font_trans_cyc[] = "font_trans_cyc";
inline constexpr char k_scan_font_last_scan_time[] = "scan_font_last_scan_time";
inline constexpr char k_scan_font_spec_path_bit[] = "scan_font_spec_path_bit";
inline constexpr char k_sync_font_spec_path_bit[] = "sync_font_spec_path_bit";
inline constexpr char k_system_exact_font_names[] = "system_exact_font_names";
inline constexpr char k_system_like_font_names[] = "system_like_font_names";
inline constexpr char k_Font_WebServer[] = "Font_WebServer";
inline constexpr char k_fon_up_cnt_today[] = "fon_up_cnt_today";
inline constexpr char k_fon_up_max_once_day[] = "fon_up_max_once_day";
inline constexpr char k_fon_up_page_len[] = "fon_up_page_len";

// Trade: Uploading of files and precise previews to the trade service.
inline constexpr char k_trade_cache_size[] = "trade_cache_size";
inline constexpr char k_trade_chk_upload_expired_sec[] = "trade_chk_upload_expired_sec";
inline constexpr char k_trade_file_comp_ratio[] = "trade_file_comp_ratio";
inline constexpr char k_trade_file_type_filter[] = "trade_file_type_filter";
inline constexpr char k_trade_file_type_sub_filter[] = "trade_file_type_sub_filter";
inline constexpr char k_trade_heart_beat_time[] = "trade_heart_beat_time";
inline constexpr char k_trade_msg_box_notify_switch[] = "trade_msg_box_notify_switch";
inline constexpr char k_trade_preview_water_mask[] = "trade_preview_water_mask";
inline constexpr char k_trade_retry_upload_interval_sec[] = "trade_retry_upload_interval_sec";
inline constexpr char k_trade_revive_cycle_sec[] = "trade_revive_cycle_sec";
inline constexpr char k_trade_revive_time[] = "trade_revive_time";
inline constexpr char k_trade_switch[] = "trade_switch";
inline constexpr char k_trade_sync_interval_sec[] = "trade_sync_interval_sec";
inline constexpr char k_trade_trans_lst_size[] = "trade_trans_lst_size";
inline constexpr char k_trade_upload_expired_lenght_sec[] = "trade_upload_expired_lenght_sec";
inline constexpr char k_trade_upload_thread_num[] = "trade_upload_thread_num";
inline constexpr char k_sync_trade_info_time[] = "sync_trade_info_time";
inline constexpr char k_precise_view_max_h[] = "precise_view_max_h";
inline constexpr char k_precise_view_max_w[] = "precise_view_max_w";
inline constexpr char k_precise_view_size[] = "precise_view_size";
inline constexpr char k_extend_trans_lst_size[] = "extend_trans_lst_size";
inline constexpr char k_trans_max_trd_cnt[] = "trans_max_trd_cnt";
inline constexpr char k_trans_progrss_chk_edge[] = "trans_progrss_chk_edge";
inline constexpr char k_rar_compress_min_size[] = "rar_compress_min_size";
inline constexpr char k_kvn_TradeWeb[] = "kvn_TradeWeb";

// Company network: Search and file transfer between the members of a company: relaying, transfer
// sizes, time-outs, device upload cycles.
inline constexpr char k_apply_company_ids[] = "apply_company_ids";
inline constexpr char k_apply_company_timeout[] = "apply_company_timeout";
inline constexpr char k_company_chk_recv_cycle[] = "company_chk_recv_cycle";
inline constexpr char k_company_code_dir[] = "company_code_dir";
inline constexpr char k_company_office_opt[] = "company_office_opt";
inline constexpr char k_company_on_top[] = "company_on_top";
inline constexpr char k_company_on_top_limit[] = "company_on_top_limit";
inline constexpr char k_company_relay_sp_threshold[] = "company_relay_sp_threshold";
inline constexpr char k_company_res_go_lan[] = "company_res_go_lan";
inline constexpr char k_company_same_title_down_type[] = "company_same_title_down_type";
inline constexpr char k_company_save_buf_size[] = "company_save_buf_size";
inline constexpr char k_company_search_max_wait[] = "company_search_max_wait";
inline constexpr char k_company_search_show_max_cnt[] = "company_search_show_max_cnt";
inline constexpr char k_company_search_timeout[] = "company_search_timeout";
inline constexpr char k_company_send_dead_max[] = "company_send_dead_max";
inline constexpr char k_compnay_send_dead_timeout[] = "compnay_send_dead_timeout";
inline constexpr char k_company_serach_pirce_range[] = "company_serach_pirce_range";
inline constexpr char k_company_sp_smp_cnt[] = "company_sp_smp_cnt";
inline constexpr char k_company_trans_boot_cycle[] = "company_trans_boot_cycle";
inline constexpr char k_company_trans_slice[] = "company_trans_slice";
inline constexpr char k_company_waster_mask[] = "company_waster_mask";
inline constexpr char k_company_waster_mask_depth[] = "company_waster_mask_depth";
inline constexpr char k_comp_dst_close_relay_delay[] = "comp_dst_close_relay_delay";
inline constexpr char k_comp_img_match_size[] = "comp_img_match_size";
inline constexpr char k_comp_match_cnt[] = "comp_match_cnt";
inline constexpr char k_comp_result_micro_img_max[] = "comp_result_micro_img_max";
inline constexpr char k_comp_search_cnt[] = "comp_search_cnt";
inline constexpr char k_co_lan_rt_life[] = "co_lan_rt_life";
inline constexpr char k_co_mul_ids[] = "co_mul_ids";
inline constexpr char k_co_mul_rtrv_t_out[] = "co_mul_rtrv_t_out";
inline constexpr char k_co_up_dev_long_cyc[] = "co_up_dev_long_cyc";
inline constexpr char k_co_up_dev_short_cnt[] = "co_up_dev_short_cnt";
inline constexpr char k_co_up_dev_short_cyc[] = "co_up_dev_short_cyc";
inline constexpr char k_search_company[] = "search_company";
inline constexpr char k_refuse_wlan_search[] = "refuse_wlan_search";
inline constexpr char k_role_inf[] = "role_inf";
inline constexpr char k_hide_dst_ip[] = "hide_dst_ip";
inline constexpr char k_dst_device_id[] = "dst_device_id";
inline constexpr char k_dst_line_syc_cyc[] = "dst_line_syc_cyc";
inline constexpr char k_tunnel_ip_port[] = "tunnel_ip_port";
inline constexpr char k_accelerate_file_size_threshold[] = "accelerate_file_size_threshold";
inline constexpr char k_accelerate_speed_threshold[] = "accelerate_speed_threshold";
inline constexpr char k_is_search_same_title_pkg[] = "is_search_same_title_pkg";
inline constexpr char k_nas_authority_caution[] = "nas_authority_caution";
inline constexpr char k_nas_chk_interval_time[] = "nas_chk_interval_time";
inline constexpr char k_trans_download_err_code[] = "trans_download_err_code";
inline constexpr char k_dev_inf_up[] = "dev_inf_up";

// Vector retrieval: Accelerated search over feature vectors: index, probes, thresholds, time
// limits, parallelism, batch retrieval.
inline constexpr char k_faiss_rtrv_able[] = "faiss_rtrv_able";
inline constexpr char k_faiss_rtrv_on[] = "faiss_rtrv_on";
inline constexpr char k_faiss_rtrv_threshold[] = "faiss_rtrv_threshold";
inline constexpr char k_faiss_rtrv_timeout_sec[] = "faiss_rtrv_timeout_sec";
inline constexpr char k_tool_faiss_ht_timeout[] = "tool_faiss_ht_timeout";
inline constexpr char k_acce_centroid_p[] = "acce_centroid_p";
inline constexpr char k_acce_idx_shelf_life_sec[] = "acce_idx_shelf_life_sec";
inline constexpr char k_acce_probe[] = "acce_probe";
inline constexpr char k_anti_dup_search[] = "anti_dup_search";
inline constexpr char k_anti_same_combine_id[] = "anti_same_combine_id";
inline constexpr char k_back_match_cnt[] = "back_match_cnt";
inline constexpr char k_bat_all_rtrv_max[] = "bat_all_rtrv_max";
inline constexpr char k_bat_img_del_clk[] = "bat_img_del_clk";
inline constexpr char k_bat_one_rtrv_max[] = "bat_one_rtrv_max";
inline constexpr char k_bat_rtrv_last_day[] = "bat_rtrv_last_day";
inline constexpr char k_bat_rtrv_retry_cyc[] = "bat_rtrv_retry_cyc";
inline constexpr char k_bat_rtrv_today_cnt[] = "bat_rtrv_today_cnt";
inline constexpr char k_big_obj_as_match_key_img[] = "big_obj_as_match_key_img";
inline constexpr char k_base_img_as_match_key_img[] = "base_img_as_match_key_img";
inline constexpr char k_chg_idx_struct[] = "chg_idx_struct";
inline constexpr char k_cosine_similarity[] = "cosine_similarity";
inline constexpr char k_euclidean_istance[] = "euclidean_istance";
inline constexpr char k_del_fea_cnt_to_rebuild_idx[] = "del_fea_cnt_to_rebuild_idx";
inline constexpr char k_fea_dim_inf[] = "fea_dim_inf";
inline constexpr char k_key_fea_cnt[] = "key_fea_cnt";
inline constexpr char k_key_fea_cyc[] = "key_fea_cyc";
inline constexpr char k_key_img_size_max[] = "key_img_size_max";
inline constexpr char k_loca_search_cnt[] = "loca_search_cnt";
inline constexpr char k_mat_key_blk_size[] = "mat_key_blk_size";
inline constexpr char k_mat_key_blk_tran_wait[] = "mat_key_blk_tran_wait";
inline constexpr char k_mat_key_size_max[] = "mat_key_size_max";
inline constexpr char k_match_by_own_exe[] = "match_by_own_exe";
inline constexpr char k_match_threshold[] = "match_threshold";
inline constexpr char k_mem_thresh_for_parallel_rtrv[] = "mem_thresh_for_parallel_rtrv";
inline constexpr char k_min_free_mem[] = "min_free_mem";
inline constexpr char k_min_search_interval[] = "min_search_interval";
inline constexpr char k_not_auto_acce_rtrv[] = "not_auto_acce_rtrv";
inline constexpr char k_parallel_rtrv_on[] = "parallel_rtrv_on";
inline constexpr char k_perf_threshold[] = "perf_threshold";
inline constexpr char k_precise_dbg_candi[] = "precise_dbg_candi";
inline constexpr char k_refuse_auto_acce_rtrv[] = "refuse_auto_acce_rtrv";
inline constexpr char k_rtrv_slow_sec[] = "rtrv_slow_sec";
inline constexpr char k_rtrv_wait_to_make_slow[] = "rtrv_wait_to_make_slow";
inline constexpr char k_search_log_max_size[] = "search_log_max_size";
inline constexpr char k_touch_req_rt_c[] = "touch_req_rt_c";
inline constexpr char k_touch_res_rt_c[] = "touch_res_rt_c";
inline constexpr char k_zip_img_to_precise_fea[] = "zip_img_to_precise_fea";
inline constexpr char k_kvn_flat_fea_part[] = "kvn_flat_fea_part";
inline constexpr char k_dbg_db_img_id[] = "dbg_db_img_id";

// Kiwi feature search: The kiwi feature kind: index parameters, saving, candidates.
inline constexpr char k_kiwi_centroid_p[] = "kiwi_centroid_p";
inline constexpr char k_kiwi_jpg_max_size[] = "kiwi_jpg_max_size";
inline constexpr char k_kiwi_probe[] = "kiwi_probe";
inline constexpr char k_kiwi_py_dir[] = "kiwi_py_dir";
inline constexpr char k_kiwi_save_cyc[] = "kiwi_save_cyc";
inline constexpr char k_kiwi_save_step[] = "kiwi_save_step";
inline constexpr char k_kiwi_search_show_max_cnt[] = "kiwi_search_show_max_cnt";
inline constexpr char k_kw_candi_amp[] = "kw_candi_amp";
inline constexpr char k_kw_candi_th[] = "kw_candi_th";
inline constexpr char k_local_feature_kiwi_knn[] = "local_feature_kiwi_knn";
inline constexpr char k_local_search_kiwi_knn[] = "local_search_kiwi_knn";
inline constexpr char k_local_search_kiwi_up_limit[] = "local_search_kiwi_up_limit";

// CNN feature search: The cnn feature kind: distance limits and result counts.
inline constexpr char k_cnn_cloth_max_good_ids[] = "cnn_cloth_max_good_ids";
inline constexpr char k_cnn_fea_sync_time[] = "cnn_fea_sync_time";
inline constexpr char k_cnn_search_max_candi_dis[] = "cnn_search_max_candi_dis";
inline constexpr char k_cnn_search_max_doubt_dis[] = "cnn_search_max_doubt_dis";
inline constexpr char k_cnn_search_max_good_dis[] = "cnn_search_max_good_dis";
inline constexpr char k_cnn_search_max_real_dis[] = "cnn_search_max_real_dis";
inline constexpr char k_cnn_search_show_max_cnt[] = "cnn_search_show_max_cnt";

// Aided search: Limits of the aided search over both feature kinds.
inline constexpr char k_aid_cnn_max_chck_dis[] = "aid_cnn_max_chck_dis";
inline constexpr char k_aid_cnn_max_real_dis[] = "aid_cnn_max_real_dis";
inline constexpr char k_aid_kiwi_max_chck_match[] = "aid_kiwi_max_chck_match";
inline constexpr char k_aid_kiwi_max_real_match[] = "aid_kiwi_max_real_match";
inline constexpr char k_aid_lst_size[] = "aid_lst_size";
inline constexpr char k_aid_range[] = "aid_range";

// Local search: Local search by hash and SIFT features, its result pages and connection lives.
inline constexpr char k_dup_max_similar_dis[] = "dup_max_similar_dis";
inline constexpr char k_dup_max_very_similar_dis[] = "dup_max_very_similar_dis";
inline constexpr char k_feature_dat_timeout_sec[] = "feature_dat_timeout_sec";
inline constexpr char k_file_map_max_feature_cnt[] = "file_map_max_feature_cnt";
inline constexpr char k_hash_fea_max_edge_length[] = "hash_fea_max_edge_length";
inline constexpr char k_has_clear_sift[] = "has_clear_sift";
inline constexpr char k_inited_fea_bit[] = "inited_fea_bit";
inline constexpr char k_local_search_max_fea_lack[] = "local_search_max_fea_lack";
inline constexpr char k_local_search_page_size[] = "local_search_page_size";
inline constexpr char k_local_search_para[] = "local_search_para";
inline constexpr char k_local_search_socket_life_sec[] = "local_search_socket_life_sec";
inline constexpr char k_local_serach_cfg[] = "local_serach_cfg";
inline constexpr char k_long_conn_life_sec[] = "long_conn_life_sec";
inline constexpr char k_loc_extract_wait[] = "loc_extract_wait";
inline constexpr char k_max_hm_similar_dis[] = "max_hm_similar_dis";
inline constexpr char k_net_search_page_size[] = "net_search_page_size";
inline constexpr char k_preview_result_cnt[] = "preview_result_cnt";
inline constexpr char k_search_hash_type[] = "search_hash_type";
inline constexpr char k_search_max_hm_candi_dis[] = "search_max_hm_candi_dis";
inline constexpr char k_show_page_size[] = "show_page_size";
inline constexpr char k_show_top_n_in_page[] = "show_top_n_in_page";
inline constexpr char k_sift_fea_max_edge_length[] = "sift_fea_max_edge_length";
inline constexpr char k_type_level[] = "type_level";
inline constexpr char k_loca_img_match_size[] = "loca_img_match_size";
inline constexpr char k_cloud_search_result_count[] = "cloud_search_result_count";
inline constexpr char k_refresh_search_feature_interval[] = "refresh_search_feature_interval";

// Duplicate removal: Finding and moving duplicate files.
inline constexpr char k_del_dup_dst[] = "del_dup_dst";
inline constexpr char k_del_dup_info[] = "del_dup_info";
inline constexpr char k_del_dup_max_same_cnt[] = "del_dup_max_same_cnt";
inline constexpr char k_del_dup_max_similar_cnt[] = "del_dup_max_similar_cnt";
inline constexpr char k_del_dup_res_page_size[] = "del_dup_res_page_size";
inline constexpr char k_del_dup_res_show_page_size[] = "del_dup_res_show_page_size";
inline constexpr char k_del_dup_threshold_val[] = "del_dup_threshold_val";
inline constexpr char k_err_file_dst[] = "err_file_dst";

// Backup and restore: Automatic and manual backups, migration of data, restore.
inline constexpr char k_ask_backup_clk[] = "ask_backup_clk";
inline constexpr char k_auto_backup[] = "auto_backup";
inline constexpr char k_autobackup_switch[] = "autobackup_switch";
inline constexpr char k_autobackup_time[] = "autobackup_time";
inline constexpr char k_backup_data[] = "backup_data";
inline constexpr char k_backup_data_save_days[] = "backup_data_save_days";
inline constexpr char k_backup_engine_list[] = "backup_engine_list";
inline constexpr char k_backup_path[] = "backup_path";
inline constexpr char k_backup_path_drv[] = "backup_path_drv";
inline constexpr char k_backup_pop_cyc[] = "backup_pop_cyc";
inline constexpr char k_backup_restore_opt[] = "backup_restore_opt";
inline constexpr char k_backup_restore_param[] = "backup_restore_param";
inline constexpr char k_data_backup_max_cnt[] = "data_backup_max_cnt";
inline constexpr char k_data_backup_preview[] = "data_backup_preview";
inline constexpr char k_data_backup_result_type[] = "data_backup_result_type";
inline constexpr char k_last_back_pop_clk[] = "last_back_pop_clk";
inline constexpr char k_last_backup_time[] = "last_backup_time";
inline constexpr char k_last_restore_time[] = "last_restore_time";
inline constexpr char k_manu_backing[] = "manu_backing";
inline constexpr char k_manual_backup[] = "manual_backup";
inline constexpr char k_migrate_data[] = "migrate_data";
inline constexpr char k_migrate_data_time[] = "migrate_data_time";
inline constexpr char k_next_backup_time[] = "next_backup_time";
inline constexpr char k_recovery_db[] = "recovery_db";
inline constexpr char k_restore[] = "restore";
inline constexpr char k_src_client_data_dir[] = "src_client_data_dir";
inline constexpr char k_dst_client_data_dir[] = "dst_client_data_dir";

// Clean-up: The periodic clean-up of data.
inline constexpr char k_auto_clean_cycle[] = "auto_clean_cycle";
inline constexpr char k_auto_clean_switch[] = "auto_clean_switch";
inline constexpr char k_last_clean_time[] = "last_clean_time";
inline constexpr char k_next_clean_time[] = "next_clean_time";

// Engines: Feature engines: which are active, where they lie, their versions and states. The names
// in mixed case are fields of an engine's description.
inline constexpr char k_cld_active_eng_id[] = "cld_active_eng_id";
inline constexpr char k_cld_new_act_eng_id[] = "cld_new_act_eng_id";
inline constexpr char k_eng_accelerate[] = "eng_accelerate";
inline constexpr char k_eng_applicable[] = "eng_applicable";
inline constexpr char k_eng_applicable_err[] = "eng_applicable_err";
inline constexpr char k_eng_cld_act_bit[] = "eng_cld_act_bit";
inline constexpr char k_eng_conda_env[] = "eng_conda_env";
inline constexpr char k_eng_data_size[] = "eng_data_size";
inline constexpr char k_eng_depend[] = "eng_depend";
inline constexpr char k_eng_id_conda_env[] = "eng_id_conda_env";
inline constexpr char k_eng_inst_dir[] = "eng_inst_dir";
inline constexpr char k_eng_install_stat[] = "eng_install_stat";
inline constexpr char k_eng_level_act_bit[] = "eng_level_act_bit";
inline constexpr char k_eng_loc_act_bit[] = "eng_loc_act_bit";
inline constexpr char k_eng_local_ver[] = "eng_local_ver";
inline constexpr char k_eng_pos[] = "eng_pos";
inline constexpr char k_eng_re_embed_stat[] = "eng_re_embed_stat";
inline constexpr char k_eng_update_stat[] = "eng_update_stat";
inline constexpr char k_eng_ver[] = "eng_ver";
inline constexpr char k_engineType[] = "engineType";
inline constexpr char k_engineTypeId[] = "engineTypeId";
inline constexpr char k_engineVersion[] = "engineVersion";
inline constexpr char k_feature_grp[] = "feature_grp";
inline constexpr char k_loc_auto_opened_eng_id[] = "loc_auto_opened_eng_id";
inline constexpr char k_loc_open_eng_id[] = "loc_open_eng_id";
inline constexpr char k_skp_embed_eng_id[] = "skp_embed_eng_id";
inline constexpr char k_up_eng_ver_clk[] = "up_eng_ver_clk";
inline constexpr char k_supportCpu[] = "supportCpu";
inline constexpr char k_supportGpu[] = "supportGpu";
inline constexpr char k_supportLocalInstall[] = "supportLocalInstall";
inline constexpr char k_supportOperatingSystem[] = "supportOperatingSystem";
inline constexpr char k_python_interface[] = "python_interface";
inline constexpr char k_extract_img_type[] = "extract_img_type";
inline constexpr char k_class[] = "class";
inline constexpr char k_construct[] = "construct";
inline constexpr char k_module[] = "module";
inline constexpr char k_method[] = "method";
inline constexpr char k_typeId[] = "typeId";
inline constexpr char k_file_type[] = "file_type";

// Embedding jobs: Feature extraction jobs and their time limits.
inline constexpr char k_dead_consume_timeout[] = "dead_consume_timeout";
inline constexpr char k_embed_gray[] = "embed_gray";
inline constexpr char k_embed_img_max_size[] = "embed_img_max_size";
inline constexpr char k_embed_statistic_last_show_engine[] = "embed_statistic_last_show_engine";
inline constexpr char k_load_embed_job_cyc[] = "load_embed_job_cyc";
inline constexpr char k_max_obj_cnt_in_seg_regions[] = "max_obj_cnt_in_seg_regions";
inline constexpr char k_ocr_eng_extract_time[] = "ocr_eng_extract_time";
inline constexpr char k_precise_eng_extract_time[] = "precise_eng_extract_time";
inline constexpr char k_re_embed_ver[] = "re_embed_ver";
inline constexpr char k_seg_embed_region[] = "seg_embed_region";
inline constexpr char k_sql_embed_err_cnt[] = "sql_embed_err_cnt";
inline constexpr char k_wait_fea_max_cnt[] = "wait_fea_max_cnt";
inline constexpr char k_wait_fea_timeout[] = "wait_fea_timeout";

// Servers and machine: Addresses and ports of the services, update state, identity of the machine,
// records of the service's boots.
inline constexpr char k_APP_Version[] = "APP_Version";
inline constexpr char k_version_num[] = "version_num";
inline constexpr char k_AutoUpdateFlag[] = "AutoUpdateFlag";
inline constexpr char k_must_update[] = "must_update";
inline constexpr char k_ExitType[] = "ExitType";
inline constexpr char k_RPCPort[] = "RPCPort";
inline constexpr char k_RPCServer[] = "RPCServer";
inline constexpr char k_DocsPort[] = "DocsPort";
inline constexpr char k_DocsServer[] = "DocsServer";
inline constexpr char k_MessagePort[] = "MessagePort";
inline constexpr char k_MessageServer[] = "MessageServer";
inline constexpr char k_korvane_WebServer[] = "korvane_WebServer";
inline constexpr char k_local_port[] = "local_port";
inline constexpr char k_local_conn_err[] = "local_conn_err";
inline constexpr char k_loc_sev_wk_st[] = "loc_sev_wk_st";
inline constexpr char k_test_server[] = "test_server";
inline constexpr char k_test_deploy[] = "test_deploy";
inline constexpr char k_test_env[] = "test_env";
inline constexpr char k_test_invalid_bitmap[] = "test_invalid_bitmap";
inline constexpr char k_conn_heart_timeout[] = "conn_heart_timeout";
inline constexpr char k_websocket_port[] = "websocket_port";
inline constexpr char k_web_serv_port[] = "web_serv_port";
inline constexpr char k_img_web[] = "img_web";
inline constexpr char k_sys_ver[] = "sys_ver";
inline constexpr char k_chk_render_heart[] = "chk_render_heart";
inline constexpr char k_last_kvn_srv_pid[] = "last_kvn_srv_pid";
inline constexpr char k_kvn3_3_clk[] = "kvn3.3_clk";
inline constexpr char k_dsk_storage_type[] = "dsk_storage_type";
inline constexpr char k_firewall_flag[] = "firewall_flag";
inline constexpr char k_ipconfig_1_utf8[] = "ipconfig_1_utf8";
inline constexpr char k_ipconfig_2[] = "ipconfig_2";
inline constexpr char k_ipconfig_3[] = "ipconfig_3";
inline constexpr char k_device_id[] = "device_id";
inline constexpr char k_pc_guid[] = "pc_guid";
inline constexpr char k_pc_memory_size[] = "pc_memory_size";
inline constexpr char k_pc_name[] = "pc_name";
inline constexpr char k_pub_ip[] = "pub_ip";
inline constexpr char k_boot_bad_clk[] = "boot_bad_clk";
inline constexpr char k_boot_bad_cnt[] = "boot_bad_cnt";
inline constexpr char k_boot_bad_dis[] = "boot_bad_dis";
inline constexpr char k_boot_bad_max[] = "boot_bad_max";
inline constexpr char k_boot_good_clk[] = "boot_good_clk";
inline constexpr char k_sys_inf_cyc[] = "sys_inf_cyc";
inline constexpr char k_syn_inf_clk[] = "syn_inf_clk";
inline constexpr char k_dsk_chk_clk[] = "dsk_chk_clk";
inline constexpr char k_update_download_path[] = "update_download_path";
inline constexpr char k_chk_update_md5_time[] = "chk_update_md5_time";
inline constexpr char k_install_ok_clk[] = "install_ok_clk";
inline constexpr char k_deploy_retry_cnt[] = "deploy_retry_cnt";
inline constexpr char k_download_cef_timeout[] = "download_cef_timeout";
inline constexpr char k_init_kvn_vol_timeout[] = "init_kvn_vol_timeout";
inline constexpr char k_kvnAppsEx_exe[] = "kvnAppsEx.exe";
inline constexpr char k_kvnAppmEx_exe[] = "kvnAppmEx.exe";
inline constexpr char k_pellix_rpc_server_exe[] = "pellix_rpc_server.exe";
inline constexpr char k_create_time[] = "create_time";
inline constexpr char k_remark[] = "remark";
inline constexpr char k_user_guide[] = "user_guide";
inline constexpr char k_cpu[] = "cpu";
inline constexpr char k_mem[] = "mem";
inline constexpr char k_dsk[] = "dsk";
inline constexpr char k_dbg_cfg_switch[] = "dbg_cfg_switch";
inline constexpr char k_context[] = "context";
inline constexpr char k_notify_dst_web[] = "notify_dst_web";
inline constexpr char k_notify_info[] = "notify_info";
inline constexpr char k_cmd_run_place[] = "cmd_run_place";
inline constexpr char k_cmd_run_in_render[] = "cmd_run_in_render";

// User interface: Window state, views, albums, exports and notifications of the user interface.
inline constexpr char k_album_mid_view[] = "album_mid_view";
inline constexpr char k_album_min_view[] = "album_min_view";
inline constexpr char k_album_refresh_cyc[] = "album_refresh_cyc";
inline constexpr char k_n_album_capacity[] = "n_album_capacity";
inline constexpr char k_n_album_mini_capacity[] = "n_album_mini_capacity";
inline constexpr char k_app_preference[] = "app_preference";
inline constexpr char k_cfg_zoom_level[] = "cfg_zoom_level";
inline constexpr char k_chk_guide[] = "chk_guide";
inline constexpr char k_col_cnt[] = "col_cnt";
inline constexpr char k_col_sec[] = "col_sec";
inline constexpr char k_collect_export_path[] = "collect_export_path";
inline constexpr char k_export_img_max_height[] = "export_img_max_height";
inline constexpr char k_export_img_max_width[] = "export_img_max_width";
inline constexpr char k_export_img_save_path[] = "export_img_save_path";
inline constexpr char k_fea_all_got_notify_interval[] = "fea_all_got_notify_interval";
inline constexpr char k_fea_all_got_notify_life_sec[] = "fea_all_got_notify_life_sec";
inline constexpr char k_file_sort[] = "file_sort";
inline constexpr char k_img_compress_levl[] = "img_compress_levl";
inline constexpr char k_img_compress_size[] = "img_compress_size";
inline constexpr char k_init_show_type[] = "init_show_type";
inline constexpr char k_last_win_size[] = "last_win_size";
inline constexpr char k_log_off_reason[] = "log_off_reason";
inline constexpr char k_log_out_switch[] = "log_out_switch";
inline constexpr char k_login_user_id[] = "login_user_id";
inline constexpr char k_micro_gap_to_resave[] = "micro_gap_to_resave";
inline constexpr char k_must_need_micro_view[] = "must_need_micro_view";
inline constexpr char k_perf_color[] = "perf_color";
inline constexpr char k_popup_color[] = "popup_color";
inline constexpr char k_pre_sub_wnd_show_fault[] = "pre_sub_wnd_show_fault";
inline constexpr char k_processe_autostart[] = "processe_autostart";
inline constexpr char k_refresh_search_req_rt_cyc[] = "refresh_search_req_rt_cyc";
inline constexpr char k_s_ticket_pop_clk[] = "s_ticket_pop_clk";
inline constexpr char k_short_cut_key[] = "short_cut_key";
inline constexpr char k_show_caution[] = "show_caution";
inline constexpr char k_show_dev_tool[] = "show_dev_tool";
inline constexpr char k_stay_awake[] = "stay_awake";
inline constexpr char k_third_login_url[] = "third_login_url";
inline constexpr char k_ui_boot[] = "ui_boot";
inline constexpr char k_ui_unable_show_path[] = "ui_unable_show_path";
inline constexpr char k_user_nick_name[] = "user_nick_name";
inline constexpr char k_wnd_act_quick[] = "wnd_act_quick";

// Module installation: Sets of modules to install and to remove.
inline constexpr char k_mdu_inst_bit[] = "mdu_inst_bit";
inline constexpr char k_mdu_inst_id_set[] = "mdu_inst_id_set";
inline constexpr char k_mdu_unin_bit[] = "mdu_unin_bit";
inline constexpr char k_mdu_unin_id_set[] = "mdu_unin_id_set";

// Message routes: Names of the notifications that pass between the services and the user
// interface. Each is a dotted name.
inline constexpr char k_company_company_list_update[] = "company.company_list_update";
inline constexpr char k_company_firewall_pass[] = "company.firewall_pass";
inline constexpr char k_log_upload[] = "log.upload";
inline constexpr char k_search_update_search_config[] = "search.update_search_config";
inline constexpr char k_sys_inform[] = "sys.inform";
inline constexpr char k_sys_update_server_info[] = "sys.update_server_info";
inline constexpr char k_task_quick_trans[] = "task.quick_trans";
inline constexpr char k_trade_authentication[] = "trade.authentication";
inline constexpr char k_trade_cancel_upload_for_has_ok[] = "trade.cancel_upload_for_has_ok";
inline constexpr char k_trade_cancel_upload_precise_preview[] =
    "trade.cancel_upload_precise_preview";
inline constexpr char k_trade_file_info[] = "trade.file_info";
inline constexpr char k_trade_identify[] = "trade.identify";
inline constexpr char k_trade_order_prompt[] = "trade.order_prompt";
inline constexpr char k_trade_property[] = "trade.property";
inline constexpr char k_trade_upload_file[] = "trade.upload_file";
inline constexpr char k_trade_upload_precise_preview[] = "trade.upload_precise_preview";

// Popup fields: Fields of a popup request, and the commands that a popup can carry.
inline constexpr char k_title[] = "title";
inline constexpr char k_param[] = "param";
inline constexpr char k_show_color[] = "show_color";
inline constexpr char k_show_title[] = "show_title";
inline constexpr char k_ok_btn_cmd[] = "ok_btn_cmd";
inline constexpr char k_level[] = "level";
inline constexpr char k_btn_names[] = "btn_names";
inline constexpr char k_b_ok_cancel[] = "b_ok_cancel";
inline constexpr char k_msg_num[] = "msg_num";
inline constexpr char k_width[] = "width";
inline constexpr char k_height[] = "height";
inline constexpr char k_check_not_show[] = "check_not_show";
inline constexpr char k_open_url_by_popup[] = "open_url_by_popup";
inline constexpr char k_jump_aid_tab_by_popup[] = "jump_aid_tab_by_popup";
inline constexpr char k_jump_tab_by_popup[] = "jump_tab_by_popup";
inline constexpr char k_jump_search_result_by_popup[] = "jump_search_result_by_popup";
inline constexpr char k_ask_backup_by_popup[] = "ask_backup_by_popup";
inline constexpr char k_update_kvn[] = "update_kvn";
inline constexpr char k_web_updated[] = "web_updated";
inline constexpr char k_page_index_num[] = "page_index_num";
inline constexpr char k_page_index[] = "page_index";
inline constexpr char k_del_burden[] = "del_burden";
inline constexpr char k_auto_del_burden[] = "auto_del_burden";
inline constexpr char k_aid_master[] = "aid_master";
inline constexpr char k_mini_popup_[] = "mini_popup_";
inline constexpr char k_mini_popup_notify_update[] = "mini_popup_notify_update";
inline constexpr char k_backup[] = "backup";
inline constexpr char k_url[] = "url";
inline constexpr char k_id[] = "id";

// Search request fields: Fields of a search request and of its answer.
inline constexpr char k_pageNum[] = "pageNum";
inline constexpr char k_search_offset[] = "search_offset";
inline constexpr char k_params[] = "params";
inline constexpr char k_b_result_has_next_page[] = "b_result_has_next_page";
inline constexpr char k_range[] = "range";
inline constexpr char k_b_clear_last_query[] = "b_clear_last_query";
inline constexpr char k_engine_id[] = "engine_id";
inline constexpr char k_b_has_detect[] = "b_has_detect";
inline constexpr char k_feature_type[] = "feature_type";
inline constexpr char k_feature_type_id[] = "feature_type_id";
inline constexpr char k_feature_bit[] = "feature_bit";
inline constexpr char k_error_info[] = "error_info";
inline constexpr char k_error_code[] = "error_code";
inline constexpr char k_candi_files[] = "candi_files";
inline constexpr char k_error_src[] = "error_src";
inline constexpr char k_kvn_ut[] = "kvn_ut";
inline constexpr char k_agent[] = "agent";
inline constexpr char k_content_filter_time[] = "content_filter_time";
inline constexpr char k_content_filter_type[] = "content_filter_type";
inline constexpr char k_content_filter_dev_id[] = "content_filter_dev_id";
inline constexpr char k_content_filter_extension[] = "content_filter_extension";
inline constexpr char k_b_remain_last_object[] = "b_remain_last_object";
inline constexpr char k_result_tab_name[] = "result_tab_name";
inline constexpr char k_usage[] = "usage";
inline constexpr char k_content[] = "content";
inline constexpr char k_rotate[] = "rotate";
inline constexpr char k_index[] = "index";
inline constexpr char k_top_n[] = "top_n";
inline constexpr char k_req_id[] = "req_id";
inline constexpr char k_lst_id[] = "lst_id";
inline constexpr char k_album_sync_clcle[] = "album_sync_clcle";
inline constexpr char k_object[] = "object";
inline constexpr char k_all[] = "all";
inline constexpr char k_indentify_ok[] = "indentify_ok";
inline constexpr char k_tag[] = "tag";

// Deployment script fields: Fields of the scripts that install engines and their environments.
inline constexpr char k_progress_name[] = "progress_name";
inline constexpr char k_customise_deploy[] = "customise_deploy";
inline constexpr char k_ignore_status[] = "ignore_status";
inline constexpr char k_module_name[] = "module_name";
inline constexpr char k_dst_file_name[] = "dst_file_name";
inline constexpr char k_install[] = "install";
inline constexpr char k_error_help[] = "error_help";
inline constexpr char k_estimate_second[] = "estimate_second";
inline constexpr char k_estimate_size[] = "estimate_size";
inline constexpr char k_rules[] = "rules";
inline constexpr char k_delay_time[] = "delay_time";
inline constexpr char k_file_name[] = "file_name";
inline constexpr char k_timeout[] = "timeout";
inline constexpr char k_unzip_module[] = "unzip_module";
inline constexpr char k_script_cmds[] = "script_cmds";
inline constexpr char k_regex_rule[] = "regex_rule";
inline constexpr char k_js_code[] = "js_code";
inline constexpr char k_prog_percent_weight[] = "prog_percent_weight";
inline constexpr char k_kvn_step_interval_flag[] = "kvn_step_interval_flag";
inline constexpr char k_install_result_chk_name[] = "install_result_chk_name";
inline constexpr char k_only_check[] = "only_check";
inline constexpr char k_pre_deploy[] = "pre_deploy";
inline constexpr char k_tail_line[] = "tail_line";
inline constexpr char k_web_ver_update[] = "web_ver_update";
inline constexpr char k__chk_error[] = "_chk_error";
inline constexpr char k_kvn_conda_chk[] = "kvn_conda_chk";
inline constexpr char k_single_line_chk_code[] = "single_line_chk_code";
inline constexpr char k_multi_line_chk_code[] = "multi_line_chk_code";
inline constexpr char k_file_local_path[] = "file_local_path";
inline constexpr char k_content_list[] = "content_list";
inline constexpr char k_file_title[] = "file_title";
inline constexpr char k_kvn_conda_env[] = "kvn_conda_env";
inline constexpr char k_kvn_file_chk[] = "kvn_file_chk";
inline constexpr char k_kvn_conda_ver[] = "kvn_conda_ver";
inline constexpr char k_KorvaneConda[] = "KorvaneConda";

// Every name above, for whoever needs to walk the whole vocabulary.
inline constexpr const char* kAllNames[] = {
    k_thumb_type,
    k_thumb_base_path,
    k_download_path,
    k_disk_rw_flag,
    k_fea_all_got_notify_switch,
    k_ui_hide_jsn,
    k_show_unscanned_file_type,
    k_all_type_for_img,
    k_opencv_typ,
    k_easy_psd_max_size,
    k_alpha_white_png_cfg,
    k_cfg_jc_path,
    k_cfg_ink_plugin_path,
    k_local_port_list,
    k_nat_port_list,
    k_meta_srv_port_lst,
    k_meta_srv_good_port,
    k_kvn_install_dir,
    k_kvn_root_data_dir,
    k_kvn_local_data_dir,
    k_kvn_scan_data_dir,
    k_kvn_preview_dir,
    k_kvn_download_dir,
    k_kvn_update_dir,
    k_kvn_tmp_dir,
    k_kvn_log_dir,
    k_kvn_deploy_log_dir,
    k_kvn_ai_dir,
    k_kvn_python_dir,
    k_kvn_conda_dir,
    k_kvn_module_file,
    k_tmp_download,
    k_KorvaneData,
    k_KorvaneDownload,
    k_KorvanePreview,
    k_KorvaneAutoLabel,
    k_KorvaneScanLabel,
    k_query_tmp,
    k_upload_tmp,
    k_plugin_dir,
    k_install_pkg_path,
    k_onewrapper_path,
    k_users,
    k__cutsome_jpg,
    k_localdata_dat,
    k_feature_dat,
    k_feature_1_dat,
    k_feature_backup_dat,
    k_feature_tmp_dat,
    k_feature_zip_dat,
    k_feature_zip_backup_dat,
    k_feature_zip_tmp_dat,
    k_featureID,
    k_other_fea_bytes,
    k_is_zip_feature,
    k_update_feature_info,
    k_scan_docs_always_path,
    k_scan_docs_feature_switch,
    k_scan_docs_feature_time,
    k_scan_docs_frequence,
    k_scan_docs_last_scan_time,
    k_scan_docs_next_scan_time,
    k_scan_docs_once_path,
    k_scan_docs_show_hidden,
    k_scan_docs_type_cancel_bit,
    k_scan_docs_type_filter,
    k_scan_docs_wait_path,
    k_scan_docs_zip_max_size,
    k_scan_docs_zip_type,
    k_scan_disk,
    k_scan_path,
    k_ScannWaitPath,
    k_scan_dir_max_cnt,
    k_scan_info_page_size,
    k_scan_label_max,
    k_scan_remote_ctrl,
    k_scan_vol_guid_chg,
    k_conf_vol_guid_chg,
    k_scan_with_file_chg_switch,
    k_scan_timeout_minute,
    k_scan_heart_cycle,
    k_scan_fea_timeout,
    k_auto_scan_switch,
    k_update_scan_path_flag,
    k_path_update_flag,
    k_add_select_folder,
    k_del_select_folder,
    k_restore_sel_folder,
    k_last_scan_ok_cnts,
    k_next_scan_time,
    k_stop_scan_clk,
    k_ctr_bit,
    k_cache_docs_dir_key,
    k_night_scan_start_clk,
    k_night_scan_start_range,
    k_use_scan_exe,
    k_file_chg_monitor_cycle,
    k_mid_root_level,
    k_md5_by_cmd,
    k_old_office_type,
    k_py_extract_img_type,
    k_all_type_for_txt,
    k_sel_type_for_txt,
    k_fea_dir_min_mb_space,
    k_fea_error_moved,
    k_xlsx_meta,
    k_type_which_has_detail,
    k_reset_jpeg_detail,
    k_restore_sharp_color,
    k_graph_magic_type_size_limit_key,
    k_chk_file_md5_cycle,
    k_previous_preview_move_path,
    k_preview_move_complete_flag,
    k_font_active_app_key,
    k_font_scan_cycle,
    k_font_service_admin_exe,
    k_font_service_admin_ip,
    k_font_service_admin_port,
    k_font_service_names,
    k_font_service_send_timeout_seconds,
    k_font_sync_2_cld_cnt,
    k_font_sync_2_cld_err_name,
    k_font_sync_2_cld_path,
    k_font_sync_2_cld_time,
    k_font_sync_2_loc_cnt,
    k_font_sync_2_loc_err_name,
    k_font_sync_2_loc_path,
    k_font_sync_2_loc_time,
    k_font_trans_cyc,
    k_scan_font_last_scan_time,
    k_scan_font_spec_path_bit,
    k_sync_font_spec_path_bit,
    k_system_exact_font_names,
    k_system_like_font_names,
    k_Font_WebServer,
    k_fon_up_cnt_today,
    k_fon_up_max_once_day,
    k_fon_up_page_len,
    k_trade_cache_size,
    k_trade_chk_upload_expired_sec,
    k_trade_file_comp_ratio,
    k_trade_file_type_filter,
    k_trade_file_type_sub_filter,
    k_trade_heart_beat_time,
    k_trade_msg_box_notify_switch,
    k_trade_preview_water_mask,
    k_trade_retry_upload_interval_sec,
    k_trade_revive_cycle_sec,
    k_trade_revive_time,
    k_trade_switch,
    k_trade_sync_interval_sec,
    k_trade_trans_lst_size,
    k_trade_upload_expired_lenght_sec,
    k_trade_upload_thread_num,
    k_sync_trade_info_time,
    k_precise_view_max_h,
    k_precise_view_max_w,
    k_precise_view_size,
    k_extend_trans_lst_size,
    k_trans_max_trd_cnt,
    k_trans_progrss_chk_edge,
    k_rar_compress_min_size,
    k_kvn_TradeWeb,
    k_apply_company_ids,
    k_apply_company_timeout,
    k_company_chk_recv_cycle,
    k_company_code_dir,
    k_company_office_opt,
    k_company_on_top,
    k_company_on_top_limit,
    k_company_relay_sp_threshold,
    k_company_res_go_lan,
    k_company_same_title_down_type,
    k_company_save_buf_size,
    k_company_search_max_wait,
    k_company_search_show_max_cnt,
    k_company_search_timeout,
    k_company_send_dead_max,
    k_compnay_send_dead_timeout,
    k_company_serach_pirce_range,
    k_company_sp_smp_cnt,
    k_company_trans_boot_cycle,
    k_company_trans_slice,
    k_company_waster_mask,
    k_company_waster_mask_depth,
    k_comp_dst_close_relay_delay,
    k_comp_img_match_size,
    k_comp_match_cnt,
    k_comp_result_micro_img_max,
    k_comp_search_cnt,
    k_co_lan_rt_life,
    k_co_mul_ids,
    k_co_mul_rtrv_t_out,
    k_co_up_dev_long_cyc,
    k_co_up_dev_short_cnt,
    k_co_up_dev_short_cyc,
    k_search_company,
    k_refuse_wlan_search,
    k_role_inf,
    k_hide_dst_ip,
    k_dst_device_id,
    k_dst_line_syc_cyc,
    k_tunnel_ip_port,
    k_accelerate_file_size_threshold,
    k_accelerate_speed_threshold,
    k_is_search_same_title_pkg,
    k_nas_authority_caution,
    k_nas_chk_interval_time,
    k_trans_download_err_code,
    k_dev_inf_up,
    k_faiss_rtrv_able,
    k_faiss_rtrv_on,
    k_faiss_rtrv_threshold,
    k_faiss_rtrv_timeout_sec,
    k_tool_faiss_ht_timeout,
    k_acce_centroid_p,
    k_acce_idx_shelf_life_sec,
    k_acce_probe,
    k_anti_dup_search,
    k_anti_same_combine_id,
    k_back_match_cnt,
    k_bat_all_rtrv_max,
    k_bat_img_del_clk,
    k_bat_one_rtrv_max,
    k_bat_rtrv_last_day,
    k_bat_rtrv_retry_cyc,
    k_bat_rtrv_today_cnt,
    k_big_obj_as_match_key_img,
    k_base_img_as_match_key_img,
    k_chg_idx_struct,
    k_cosine_similarity,
    k_euclidean_istance,
    k_del_fea_cnt_to_rebuild_idx,
    k_fea_dim_inf,
    k_key_fea_cnt,
    k_key_fea_cyc,
    k_key_img_size_max,
    k_loca_search_cnt,
    k_mat_key_blk_size,
    k_mat_key_blk_tran_wait,
    k_mat_key_size_max,
    k_match_by_own_exe,
    k_match_threshold,
    k_mem_thresh_for_parallel_rtrv,
    k_min_free_mem,
    k_min_search_interval,
    k_not_auto_acce_rtrv,
    k_parallel_rtrv_on,
    k_perf_threshold,
    k_precise_dbg_candi,
    k_refuse_auto_acce_rtrv,
    k_rtrv_slow_sec,
    k_rtrv_wait_to_make_slow,
    k_search_log_max_size,
    k_touch_req_rt_c,
    k_touch_res_rt_c,
    k_zip_img_to_precise_fea,
    k_kvn_flat_fea_part,
    k_dbg_db_img_id,
    k_kiwi_centroid_p,
    k_kiwi_jpg_max_size,
    k_kiwi_probe,
    k_kiwi_py_dir,
    k_kiwi_save_cyc,
    k_kiwi_save_step,
    k_kiwi_search_show_max_cnt,
    k_kw_candi_amp,
    k_kw_candi_th,
    k_local_feature_kiwi_knn,
    k_local_search_kiwi_knn,
    k_local_search_kiwi_up_limit,
    k_cnn_cloth_max_good_ids,
    k_cnn_fea_sync_time,
    k_cnn_search_max_candi_dis,
    k_cnn_search_max_doubt_dis,
    k_cnn_search_max_good_dis,
    k_cnn_search_max_real_dis,
    k_cnn_search_show_max_cnt,
    k_aid_cnn_max_chck_dis,
    k_aid_cnn_max_real_dis,
    k_aid_kiwi_max_chck_match,
    k_aid_kiwi_max_real_match,
    k_aid_lst_size,
    k_aid_range,
    k_dup_max_similar_dis,
    k_dup_max_very_similar_dis,
    k_feature_dat_timeout_sec,
    k_file_map_max_feature_cnt,
    k_hash_fea_max_edge_length,
    k_has_clear_sift,
    k_inited_fea_bit,
    k_local_search_max_fea_lack,
    k_local_search_page_size,
    k_local_search_para,
    k_local_search_socket_life_sec,
    k_local_serach_cfg,
    k_long_conn_life_sec,
    k_loc_extract_wait,
    k_max_hm_similar_dis,
    k_net_search_page_size,
    k_preview_result_cnt,
    k_search_hash_type,
    k_search_max_hm_candi_dis,
    k_show_page_size,
    k_show_top_n_in_page,
    k_sift_fea_max_edge_length,
    k_type_level,
    k_loca_img_match_size,
    k_cloud_search_result_count,
    k_refresh_search_feature_interval,
    k_del_dup_dst,
    k_del_dup_info,
    k_del_dup_max_same_cnt,
    k_del_dup_max_similar_cnt,
    k_del_dup_res_page_size,
    k_del_dup_res_show_page_size,
    k_del_dup_threshold_val,
    k_err_file_dst,
    k_ask_backup_clk,
    k_auto_backup,
    k_autobackup_switch,
    k_autobackup_time,
    k_backup_data,
    k_backup_data_save_days,
    k_backup_engine_list,
    k_backup_path,
    k_backup_path_drv,
    k_backup_pop_cyc,
    k_backup_restore_opt,
    k_backup_restore_param,
    k_data_backup_max_cnt,
    k_data_backup_preview,
    k_data_backup_result_type,
    k_last_back_pop_clk,
    k_last_backup_time,
    k_last_restore_time,
    k_manu_backing,
    k_manual_backup,
    k_migrate_data,
    k_migrate_data_time,
    k_next_backup_time,
    k_recovery_db,
    k_restore,
    k_src_client_data_dir,
    k_dst_client_data_dir,
    k_auto_clean_cycle,
    k_auto_clean_switch,
    k_last_clean_time,
    k_next_clean_time,
    k_cld_active_eng_id,
    k_cld_new_act_eng_id,
    k_eng_accelerate,
    k_eng_applicable,
    k_eng_applicable_err,
    k_eng_cld_act_bit,
    k_eng_conda_env,
    k_eng_data_size,
    k_eng_depend,
    k_eng_id_conda_env,
    k_eng_inst_dir,
    k_eng_install_stat,
    k_eng_level_act_bit,
    k_eng_loc_act_bit,
    k_eng_local_ver,
    k_eng_pos,
    k_eng_re_embed_stat,
    k_eng_update_stat,
    k_eng_ver,
    k_engineType,
    k_engineTypeId,
    k_engineVersion,
    k_feature_grp,
    k_loc_auto_opened_eng_id,
    k_loc_open_eng_id,
    k_skp_embed_eng_id,
    k_up_eng_ver_clk,
    k_supportCpu,
    k_supportGpu,
    k_supportLocalInstall,
    k_supportOperatingSystem,
    k_python_interface,
    k_extract_img_type,
    k_class,
    k_construct,
    k_module,
    k_method,
    k_typeId,
    k_file_type,
    k_dead_consume_timeout,
    k_embed_gray,
    k_embed_img_max_size,
    k_embed_statistic_last_show_engine,
    k_load_embed_job_cyc,
    k_max_obj_cnt_in_seg_regions,
    k_ocr_eng_extract_time,
    k_precise_eng_extract_time,
    k_re_embed_ver,
    k_seg_embed_region,
    k_sql_embed_err_cnt,
    k_wait_fea_max_cnt,
    k_wait_fea_timeout,
    k_APP_Version,
    k_version_num,
    k_AutoUpdateFlag,
    k_must_update,
    k_ExitType,
    k_RPCPort,
    k_RPCServer,
    k_DocsPort,
    k_DocsServer,
    k_MessagePort,
    k_MessageServer,
    k_korvane_WebServer,
    k_local_port,
    k_local_conn_err,
    k_loc_sev_wk_st,
    k_test_server,
    k_test_deploy,
    k_test_env,
    k_test_invalid_bitmap,
    k_conn_heart_timeout,
    k_websocket_port,
    k_web_serv_port,
    k_img_web,
    k_sys_ver,
    k_chk_render_heart,
    k_last_kvn_srv_pid,
    k_kvn3_3_clk,
    k_dsk_storage_type,
    k_firewall_flag,
    k_ipconfig_1_utf8,
    k_ipconfig_2,
    k_ipconfig_3,
    k_device_id,
    k_pc_guid,
    k_pc_memory_size,
    k_pc_name,
    k_pub_ip,
    k_boot_bad_clk,
    k_boot_bad_cnt,
    k_boot_bad_dis,
    k_boot_bad_max,
    k_boot_good_clk,
    k_sys_inf_cyc,
    k_syn_inf_clk,
    k_dsk_chk_clk,
    k_update_download_path,
    k_chk_update_md5_time,
    k_install_ok_clk,
    k_deploy_retry_cnt,
    k_download_cef_timeout,
    k_init_kvn_vol_timeout,
    k_kvnAppsEx_exe,
    k_kvnAppmEx_exe,
    k_pellix_rpc_server_exe,
    k_create_time,
    k_remark,
    k_user_guide,
    k_cpu,
    k_mem,
    k_dsk,
    k_dbg_cfg_switch,
    k_context,
    k_notify_dst_web,
    k_notify_info,
    k_cmd_run_place,
    k_cmd_run_in_render,
    k_album_mid_view,
    k_album_min_view,
    k_album_refresh_cyc,
    k_n_album_capacity,
    k_n_album_mini_capacity,
    k_app_preference,
    k_cfg_zoom_level,
    k_chk_guide,
    k_col_cnt,
    k_col_sec,
    k_collect_export_path,
    k_export_img_max_height,
    k_export_img_max_width,
    k_export_img_save_path,
    k_fea_all_got_notify_interval,
    k_fea_all_got_notify_life_sec,
    k_file_sort,
    k_img_compress_levl,
    k_img_compress_size,
    k_init_show_type,
    k_last_win_size,
    k_log_off_reason,
    k_log_out_switch,
    k_login_user_id,
    k_micro_gap_to_resave,
    k_must_need_micro_view,
    k_perf_color,
    k_popup_color,
    k_pre_sub_wnd_show_fault,
    k_processe_autostart,
    k_refresh_search_req_rt_cyc,
    k_s_ticket_pop_clk,
    k_short_cut_key,
    k_show_caution,
    k_show_dev_tool,
    k_stay_awake,
    k_third_login_url,
    k_ui_boot,
    k_ui_unable_show_path,
    k_user_nick_name,
    k_wnd_act_quick,
    k_mdu_inst_bit,
    k_mdu_inst_id_set,
    k_mdu_unin_bit,
    k_mdu_unin_id_set,
    k_company_company_list_update,
    k_company_firewall_pass,
    k_log_upload,
    k_search_update_search_config,
    k_sys_inform,
    k_sys_update_server_info,
    k_task_quick_trans,
    k_trade_authentication,
    k_trade_cancel_upload_for_has_ok,
    k_trade_cancel_upload_precise_preview,
    k_trade_file_info,
    k_trade_identify,
    k_trade_order_prompt,
    k_trade_property,
    k_trade_upload_file,
    k_trade_upload_precise_preview,
    k_title,
    k_param,
    k_show_color,
    k_show_title,
    k_ok_btn_cmd,
    k_level,
    k_btn_names,
    k_b_ok_cancel,
    k_msg_num,
    k_width,
    k_height,
    k_check_not_show,
    k_open_url_by_popup,
    k_jump_aid_tab_by_popup,
    k_jump_tab_by_popup,
    k_jump_search_result_by_popup,
    k_ask_backup_by_popup,
    k_update_kvn,
    k_web_updated,
    k_page_index_num,
    k_page_index,
    k_del_burden,
    k_auto_del_burden,
    k_aid_master,
    k_mini_popup_,
    k_mini_popup_notify_update,
    k_backup,
    k_url,
    k_id,
    k_pageNum,
    k_search_offset,
    k_params,
    k_b_result_has_next_page,
    k_range,
    k_b_clear_last_query,
    k_engine_id,
    k_b_has_detect,
    k_feature_type,
    k_feature_type_id,
    k_feature_bit,
    k_error_info,
    k_error_code,
    k_candi_files,
    k_error_src,
    k_kvn_ut,
    k_agent,
    k_content_filter_time,
    k_content_filter_type,
    k_content_filter_dev_id,
    k_content_filter_extension,
    k_b_remain_last_object,
    k_result_tab_name,
    k_usage,
    k_content,
    k_rotate,
    k_index,
    k_top_n,
    k_req_id,
    k_lst_id,
    k_album_sync_clcle,
    k_object,
    k_all,
    k_indentify_ok,
    k_tag,
    k_progress_name,
    k_customise_deploy,
    k_ignore_status,
    k_module_name,
    k_dst_file_name,
    k_install,
    k_error_help,
    k_estimate_second,
    k_estimate_size,
    k_rules,
    k_delay_time,
    k_file_name,
    k_timeout,
    k_unzip_module,
    k_script_cmds,
    k_regex_rule,
    k_js_code,
    k_prog_percent_weight,
    k_kvn_step_interval_flag,
    k_install_result_chk_name,
    k_only_check,
    k_pre_deploy,
    k_tail_line,
    k_web_ver_update,
    k__chk_error,
    k_kvn_conda_chk,
    k_single_line_chk_code,
    k_multi_line_chk_code,
    k_file_local_path,
    k_content_list,
    k_file_title,
    k_kvn_conda_env,
    k_kvn_file_chk,
    k_kvn_conda_ver,
    k_KorvaneConda,
};

}  // namespace cfg_names

#endif  // COMMON_INCLUDES_CONFIG_KEY_NAMES_H_
